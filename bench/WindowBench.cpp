// Measures the main window as it is drawn into memory: until it is there, and each frame of a scroll through
// a thread of 10,000 messages beside the list of its 2,000 neighbours. Prints one table. Usage: window-bench
// [--smoke]

#include "Measuring.h"
#include "Table.h"
#include "fakes/TestView.h"
#include "shell/QmlMainWindow.h"
#include "shell/Tab.h"

#include <QApplication>
#include <QImage>
#include <QQuickItem>
#include <QQuickView>

#include <cstring>
#include <vector>

using namespace brenvale;
using namespace brenvale::bench;

namespace {

constexpr int threadCount = 2'000;
constexpr int longThread = 10'000;

QString addressOf(int thread) {
    return QStringLiteral("+49 170 %1").arg(1'000'000 + thread);
}

SmsRecord message(int thread, int number) {
    constexpr double start = 1'600'000'000'000;
    constexpr double minute = 60'000;
    return {.address = addressOf(thread),
            .name = QStringLiteral("Имя Фамилия %1").arg(thread),
            .body = QStringLiteral("Привет, Ann! Wie geht es dir heute? 你好, see you at %1 then. ")
                        .arg(number)
                        .repeated(1 + (number % 4)),
            .date = start + (number * minute),
            .type = 1 + (number % 2)};
}

/// Newest first, as a phone sends it.
QList<SmsRecord> smsLog() {
    QList<SmsRecord> log;
    for (int number = longThread; number > 0; --number) {
        log.append(message(0, number));
    }
    for (int thread = 1; thread < threadCount; ++thread) {
        log.append(message(thread, 0));
    }
    return log;
}

/// The list in sight with so many rows; null where there is none.
QQuickItem* listOf(QQuickItem& root, int count) {
    if (root.inherits("QQuickListView") && root.property("count").toInt() == count) {
        return &root;
    }
    for (auto* item : root.childItems()) {
        if (auto* found = listOf(*item, count)) {
            return found;
        }
    }
    return nullptr;
}

/// Milliseconds of each frame: what the list makes and drops, the layout and the drawing.
Distribution scroll(QQuickView& window, QQuickItem& list, int frames) {
    constexpr double pixelsOfAFrame = 120; // a fast turn of the wheel
    std::vector<double> times;
    for (int frame = 0; frame < frames; ++frame) {
        const auto start = bench::Clock::now();
        list.setProperty("contentY", list.property("contentY").toDouble() - pixelsOfAFrame);
        (void)window.grabWindow();
        times.push_back(1e3 * secondsSince(start));
        QCoreApplication::processEvents();
    }
    return distributionOf(times);
}

void printFrames(const Table& table, const char* what, const Distribution& frames) {
    table.heading(what);
    table.row("a frame, median (aim: < 8)", frames.median, "ms");
    table.row("   99th percentile", frames.percentile99, "ms");
}

} // namespace

int main(int argc, char* argv[]) {
    const int frames = argc > 1 && std::strcmp(argv[1], "--smoke") == 0 ? 10 : 600;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    TestView state;
    state.connect();
    state.reportSms(smsLog());
    state.view.setSelectedTab(Tab::sms);
    state.view.sendSmsTab()->openConversation(addressOf(0));
    const Table table(stdout);
    table.heading("The window");
    const auto start = bench::Clock::now();
    QmlMainWindow window(state.view);
    window.makeKeyAndOrderFront();
    (void)window.view()->grabWindow();
    table.row("until the first picture of it", 1e3 * secondsSince(start), "ms");
    QCoreApplication::processEvents();
    auto* messages = listOf(*window.view()->rootObject(), longThread);
    auto* conversations = listOf(*window.view()->rootObject(), threadCount);
    if (messages == nullptr || conversations == nullptr) {
        std::fputs("the lists are not there\n", stderr);
        return 1;
    }
    printFrames(table, "A scroll through 10,000 messages", scroll(*window.view(), *messages, frames));
    conversations->setProperty("contentY", 100'000);
    printFrames(table, "A scroll through 2,000 conversations with avatars",
                scroll(*window.view(), *conversations, frames));
    return 0;
}
