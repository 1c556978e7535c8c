#include "messages/ContactNames.h"

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

CallRecord call(const char* number, std::optional<QString> name) {
    return {.number = QString::fromUtf8(number), .name = std::move(name)};
}

ContactNames namesOf(const QList<CallRecord>& calls) {
    ContactNames names;
    names.setCallLog(calls);
    return names;
}

const auto ann = QStringLiteral("Ann");
const auto number = QStringLiteral("+1 202 555 0123");

} // namespace

TEST(ContactName, IsTheOneProvided) {
    const auto names = namesOf({call("2025550123", QStringLiteral("Other"))});
    EXPECT_EQ(names.contactName(number, ann), ann);
}

TEST(ContactName, IsTheCallLogsWhereNoneOrAnEmptyOneIsProvided) {
    const auto names = namesOf({call("2025550123", ann)});
    EXPECT_EQ(names.contactName(number), ann);
    EXPECT_EQ(names.contactName(number, QString()), ann);
    EXPECT_EQ(names.contactName(number, QStringLiteral("")), ann);
}

TEST(ContactName, IsTheAddressAsWrittenWhereNobodyKnowsOne) {
    EXPECT_EQ(namesOf({}).contactName(number), number);
    EXPECT_EQ(namesOf({call("9", ann)}).contactName(number), number);
    EXPECT_EQ(namesOf({}).contactName(QString()), QString());
}

TEST(ContactName, OfTheCallsOfANumberOnlyTheFirstCounts) {
    EXPECT_EQ(namesOf({call("2025550123", {}), call("2025550123", ann)}).contactName(number), number);
    EXPECT_EQ(namesOf({call("2025550123", QStringLiteral("")), call("2025550123", ann)}).contactName(number),
              number);
    EXPECT_EQ(
        namesOf({call("2025550123", ann), call("+12025550123", QStringLiteral("Bob"))}).contactName(number),
        ann);
}

TEST(ContactName, IsForgottenWithItsLog) {
    auto names = namesOf({call("2025550123", ann)});
    names.setCallLog({});
    EXPECT_EQ(names.contactName(number), number);
}

TEST(ContactName, OfASenderOfLettersIgnoresCase) {
    EXPECT_EQ(namesOf({call("MYBANK", ann)}).contactName(QStringLiteral("MyBank")), ann);
}
