#include "fakes/TestView.h"

#include <benchmark/benchmark.h>

using namespace brenvale;

namespace {

constexpr int messageCount = 50'000;
constexpr int threadCount = 2'000;
constexpr int longThread = 10'000; ///< messages of the first address
constexpr int callCount = 5'000;

QString addressOf(int thread) {
    return QStringLiteral("+49 170 %1").arg(1'000'000 + thread);
}

/// Newest first, as a phone sends it.
QList<SmsRecord> smsLog(int newest) {
    QList<SmsRecord> log;
    for (int i = newest; i > newest - messageCount; --i) {
        const int thread = i % (messageCount / longThread) == 0 ? 0 : i % threadCount;
        log.append(
            {.address = addressOf(thread),
             .name = thread % 3 == 0 ? std::optional(QStringLiteral("Имя Фамилия")) : std::nullopt,
             .body = QStringLiteral("Привет, Ann! Wie geht es dir heute? 你好, see you at %1 then.").arg(i),
             .date = 1'600'000'000'000.0 + (i * 60'000.0),
             .type = 1 + (i % 2)});
    }
    return log;
}

QList<CallRecord> callLog(int newest) {
    QList<CallRecord> log;
    for (int i = newest; i > newest - callCount; --i) {
        log.append({.number = addressOf(i % threadCount),
                    .name = QStringLiteral("Name %1").arg(i % threadCount),
                    .date = 1'600'000'000'000.0 + (i * 60'000.0)});
    }
    return log;
}

/// A window with the logs, a thread open and the rest as the user left it.
struct FullWindow : TestView {
    FullWindow() {
        reportSms(smsLog(messageCount));
        reportCalls(callLog(callCount));
        view.sendSmsTab()->openConversation(addressOf(0));
    }
};

/// The next log has one message more and one less, as a phone with a limit sends it.
void takeSmsLog(benchmark::State& state) {
    FullWindow window;
    const QList<QList<SmsRecord>> logs{smsLog(messageCount + 1), smsLog(messageCount)};
    for (int round = 0; auto _ : state) {
        window.reportSms(logs[round++ % 2]);
    }
}

void takeFirstSmsLog(benchmark::State& state) {
    FullWindow window;
    const auto log = smsLog(messageCount);
    for (auto _ : state) {
        state.PauseTiming();
        window.reportSms({});
        state.ResumeTiming();
        window.reportSms(log);
    }
}

void takeCallLog(benchmark::State& state) {
    FullWindow window;
    const QList<QList<CallRecord>> logs{callLog(callCount + 1), callLog(callCount)};
    for (int round = 0; auto _ : state) {
        window.reportCalls(logs[round++ % 2]);
    }
}

/// The first keystroke of a search that finds nothing, so that every message is looked at.
void startSearch(benchmark::State& state) {
    FullWindow window;
    for (auto _ : state) {
        state.PauseTiming();
        window.view.sendSmsTab()->setContactQuery({});
        state.ResumeTiming();
        window.view.sendSmsTab()->setContactQuery(QStringLiteral("ß"));
    }
}

/// Those that follow.
void goOnSearching(benchmark::State& state) {
    FullWindow window;
    window.view.sendSmsTab()->setContactQuery(QStringLiteral("ß"));
    for (int round = 0; auto _ : state) {
        window.view.sendSmsTab()->setContactQuery(round++ % 2 == 0 ? QStringLiteral("see yoü")
                                                                   : QStringLiteral("see yö"));
    }
}

/// A keystroke that finds every other thread, and one that finds all again.
void narrowAndWiden(benchmark::State& state) {
    FullWindow window;
    for (int round = 0; auto _ : state) {
        window.view.sendSmsTab()->setContactQuery(round++ % 2 == 0 ? QStringLiteral("e")
                                                                   : QStringLiteral("1 then"));
    }
}

void openThread(benchmark::State& state) {
    FullWindow window;
    for (int round = 0; auto _ : state) {
        window.view.sendSmsTab()->openConversation(addressOf(round++ % 2));
    }
}

void sendMessage(benchmark::State& state) {
    FullWindow window;
    for (auto _ : state) {
        window.view.sendSmsTab()->setChatText(QStringLiteral("Hi"));
        window.view.sendSmsTab()->sendChatMessage();
    }
}

BENCHMARK(takeFirstSmsLog)->Unit(benchmark::kMillisecond);
BENCHMARK(takeSmsLog)->Unit(benchmark::kMillisecond);
BENCHMARK(takeCallLog)->Unit(benchmark::kMillisecond);
BENCHMARK(startSearch)->Unit(benchmark::kMillisecond);
BENCHMARK(goOnSearching)->Unit(benchmark::kMillisecond);
BENCHMARK(narrowAndWiden)->Unit(benchmark::kMillisecond);
BENCHMARK(openThread)->Unit(benchmark::kMillisecond);
BENCHMARK(sendMessage)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
