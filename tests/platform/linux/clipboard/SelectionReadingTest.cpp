#include "platform/linux/clipboard/SelectionReading.h"

#include "FakeSelections.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

constexpr std::chrono::hours long_time{1};

struct SelectionReading : testing::Test {
    std::optional<QString> text() {
        std::optional<QString> read;
        int answers = 0;
        readText(selections, Selection::clipboard, [&](std::optional<QString> answer) {
            read = std::move(answer);
            ++answers;
        });
        EXPECT_EQ(answers, 1);
        return read;
    }

    ClipboardContents contents(std::chrono::milliseconds patience = long_time) {
        ClipboardContents read;
        readContents(selections, Selection::clipboard, patience,
                     [&read](ClipboardContents answer) { read = std::move(answer); });
        return read;
    }

    void copy(std::vector<ClipboardContents::Item> items) {
        selections.copy(Selection::clipboard, {.items = std::move(items)});
    }

    FakeSelections selections;
};

} // namespace

TEST_F(SelectionReading, TextIsReadInItsBestFormatAlone) {
    copy({{"STRING", "\xfc"}, {"UTF8_STRING", "ü"}, {"image/png", "picture"}});
    EXPECT_EQ(text(), QStringLiteral("ü"));
    EXPECT_THAT(selections.reads, ElementsAre("UTF8_STRING"));
}

TEST_F(SelectionReading, WithoutTextNothingIsAskedFor) {
    EXPECT_EQ(text(), std::nullopt);
    copy({{"text/uri-list", "file:///tmp/one"}});
    EXPECT_EQ(text(), std::nullopt);
    EXPECT_TRUE(selections.reads.isEmpty());
}

TEST_F(SelectionReading, AnOwnerThatGivesNothingHasNoText) {
    copy({{"UTF8_STRING", "text"}});
    selections.refused = {"UTF8_STRING"};
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(SelectionReading, ContentsAreReadInAllFormatsTextFirst) {
    copy({{"TARGETS", ""}, {"image/png", "picture"}, {"UTF8_STRING", "text"}, {"text/html", "<b>"}});
    EXPECT_EQ(contents(),
              (ClipboardContents{{{"UTF8_STRING", "text"}, {"image/png", "picture"}, {"text/html", "<b>"}}}));
}

TEST_F(SelectionReading, AFormatThatIsNotGivenIsLeftOut) {
    copy({{"UTF8_STRING", "text"}, {"image/png", "picture"}, {"text/html", "<b>"}});
    selections.refused = {"image/png"};
    EXPECT_THAT(contents().formats(), ElementsAre("UTF8_STRING", "text/html"));
}

TEST_F(SelectionReading, DozensOfFormatsAreNotAllAskedFor) {
    constexpr int count = 100;
    std::vector<ClipboardContents::Item> items;
    items.reserve(count);
    for (int number = 0; number < count; ++number) {
        items.push_back({QByteArray("image/") + QByteArray::number(number), "picture"});
    }
    copy(std::move(items));
    EXPECT_THAT(contents().items, SizeIs(16));
}

TEST_F(SelectionReading, WhatIsTooLargeIsLeftOut) {
    copy({{"UTF8_STRING", "text"}, {"image/bmp", QByteArray(65 << 20, 'x')}, {"image/png", "picture"}});
    EXPECT_THAT(contents().formats(), ElementsAre("UTF8_STRING", "image/png"));
}

TEST_F(SelectionReading, WhenTheTimeIsOverWhatHasComeIsTaken) {
    copy({{"UTF8_STRING", "text"}, {"image/png", "picture"}});
    EXPECT_EQ(contents(std::chrono::milliseconds(0)), ClipboardContents());
}
