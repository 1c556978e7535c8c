#include "shell/ClipboardTab.h"
#include "fakes/TestPhone.h"
#include "records/Instant.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

struct Clipboard : testing::Test, TestPhone {
    ClipboardTab tab{*store, *server, fake.pasteboard};
};

} // namespace

TEST_F(Clipboard, ShowsWhatThePhoneSent) {
    receive(R"({"action":"clipboard","text":"one"})");
    receive(R"({"action":"clipboard","text":"two"})");
    EXPECT_THAT(column(*tab.clipboardHistory(), ClipboardListModel::TextRole), ElementsAre("two", "one"));
    EXPECT_EQ(tab.clipboardHistory()->count(), 2);
    EXPECT_THAT(column(*tab.clipboardHistory(), ClipboardListModel::DateTextRole)[0],
                abbreviatedDateAndTime(store->clipboardHistory.get()[0].date));
}

TEST_F(Clipboard, ClearsItsOwnListAlone) {
    store->addClipboard(QStringLiteral("one"));
    store->add({.id = QUuid::createUuid()});
    tab.clearClipboard();
    EXPECT_EQ(tab.clipboardHistory()->count(), 0);
    EXPECT_EQ(store->items.get().size(), 1);
}

TEST_F(Clipboard, SendsTheClipboardAndKeepsNoRecordOfIt) {
    connect();
    fake.pasteboard.contents = QStringLiteral("text");
    tab.sendCurrentClipboard();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"clipboard","text":"text"})"));
    EXPECT_EQ(tab.clipboardHistory()->count(), 0);
}

TEST_F(Clipboard, SendsNoEmptyClipboard) {
    connect();
    tab.sendCurrentClipboard();
    fake.pasteboard.contents = QString();
    tab.sendCurrentClipboard();
    EXPECT_THAT(takeSent(), ElementsAre());
}

TEST_F(Clipboard, SendsTheTextWhenItsOwnerGivesIt) {
    connect();
    fake.pasteboard.isSlow = true;
    tab.sendCurrentClipboard();
    EXPECT_THAT(takeSent(), ElementsAre());
    fake.pasteboard.contents = QStringLiteral("late");
    fake.pasteboard.answerAll();
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"clipboard","text":"late"})"));
}

TEST_F(Clipboard, CopiesAllOfAText) {
    const auto text = QStringLiteral("line\n").repeated(20);
    store->addClipboard(text);
    tab.copyText(column(*tab.clipboardHistory(), ClipboardListModel::TextRole)[0]);
    EXPECT_THAT(fake.pasteboard.calls, ElementsAre("clear", QStringLiteral("set:") + text));
    EXPECT_EQ(tab.clipboardHistory()->count(), 1);
}
