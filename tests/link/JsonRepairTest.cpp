#include "link/JsonRepair.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using brenvale::isOutOfRangeMark;
using brenvale::repairJson;

namespace {

std::string repaired(std::string_view text) {
    return std::string(repairJson(text).text());
}

} // namespace

TEST(RepairJson, LeavesAloneWhatTheParserTakes) {
    for (const std::string_view text :
         {"", "{}", R"({"a":12,"b":-1.5e3,"c":"1e400 18446744073709551616"})", R"("\\ud83d")",
          R"("\ud83d\ude00")", "18446744073709551615", "-9223372036854775808", "1e-400", "0.5"}) {
        EXPECT_EQ(repaired(text), text);
    }
}

TEST(RepairJson, LeavesAloneWhatIsNoJson) {
    for (const std::string_view text : {"1-2", "--1", "1e", "\"\\u12", "\"\\", "0x1F", "-", "1.2.3", "01e999",
                                        "1.e999", "-.5e999", "1e999e1", "00", "-01e999"}) {
        EXPECT_EQ(repaired(text), text);
    }
}

TEST(RepairJson, MakesADoubleOfAnIntegerBeyond64Bits) {
    EXPECT_EQ(repaired("[18446744073709551616,1]"), "[18446744073709551616.0,1]");
    EXPECT_EQ(repaired("-99999999999999999999"), "-99999999999999999999.0");
    EXPECT_EQ(repaired("-9223372036854775809"), "-9223372036854777856.0") << "not rounded into the range";
}

TEST(RepairJson, MarksANumberBeyondADouble) {
    EXPECT_EQ(repaired("[1e400,-2E+999]"), "[1.7976931348623157e308,-1.7976931348623157e308]");
    EXPECT_EQ(repaired(std::string(400, '9')), "1.7976931348623157e308");
}

TEST(RepairJson, TheMarkIsTheLargestDoubleAlone) {
    constexpr double largest = std::numeric_limits<double>::max();
    EXPECT_TRUE(isOutOfRangeMark(largest));
    EXPECT_TRUE(isOutOfRangeMark(-largest));
    EXPECT_FALSE(isOutOfRangeMark(std::nextafter(largest, 0)));
    EXPECT_FALSE(isOutOfRangeMark(0));
}

TEST(RepairJson, ReplacesHalvesOfSurrogatePairs) {
    EXPECT_EQ(repaired(R"("\ud83d")"), R"("\ufffd")");
    EXPECT_EQ(repaired(R"("\ud83d\n\uDC00")"), R"("\ufffd\n\ufffd")");
    EXPECT_EQ(repaired(R"("\ud83d\ud83d\ude00")"), R"("\ufffd\ud83d\ude00")");
}
