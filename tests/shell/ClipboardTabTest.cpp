#include "fakes/TestView.h"
#include "records/Instant.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

struct ClipboardTab : testing::Test, TestView {};

} // namespace

TEST_F(ClipboardTab, ShowsWhatThePhoneSent) {
    receive(R"({"action":"clipboard","text":"one"})");
    receive(R"({"action":"clipboard","text":"two"})");
    EXPECT_THAT(column(*view.clipboardHistory(), ClipboardListModel::TextRole), ElementsAre("two", "one"));
    EXPECT_EQ(view.clipboardHistory()->count(), 2);
    EXPECT_THAT(column(*view.clipboardHistory(), ClipboardListModel::DateTextRole)[0],
                abbreviatedDateAndTime(store->clipboardHistory.get()[0].date));
}

TEST_F(ClipboardTab, ClearsItsOwnListAlone) {
    store->addClipboard(QStringLiteral("one"));
    store->add({.id = QUuid::createUuid()});
    view.clearClipboard();
    EXPECT_EQ(view.clipboardHistory()->count(), 0);
    EXPECT_EQ(view.items()->count(), 1);
}

TEST_F(ClipboardTab, SendsTheClipboardAndKeepsNoRecordOfIt) {
    connect();
    fake.pasteboard.contents = QStringLiteral("text");
    view.sendCurrentClipboard();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"clipboard","text":"text"})"));
    EXPECT_EQ(view.clipboardHistory()->count(), 0);
}

TEST_F(ClipboardTab, SendsNoEmptyClipboard) {
    connect();
    view.sendCurrentClipboard();
    fake.pasteboard.contents = QString();
    view.sendCurrentClipboard();
    EXPECT_THAT(takeSent(), ElementsAre());
}

TEST_F(ClipboardTab, SendsTheTextWhenItsOwnerGivesIt) {
    connect();
    fake.pasteboard.isSlow = true;
    view.sendCurrentClipboard();
    EXPECT_THAT(takeSent(), ElementsAre());
    fake.pasteboard.contents = QStringLiteral("late");
    fake.pasteboard.answerAll();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"clipboard","text":"late"})"));
}

TEST_F(ClipboardTab, CopiesAllOfAText) {
    const auto text = QStringLiteral("line\n").repeated(20);
    store->addClipboard(text);
    view.copyText(column(*view.clipboardHistory(), ClipboardListModel::TextRole)[0]);
    EXPECT_THAT(fake.pasteboard.calls, ElementsAre("clear", QStringLiteral("set:") + text));
    EXPECT_EQ(view.clipboardHistory()->count(), 1);
}
