#include "link/Handshake.h"
#include "link/Json.h"
#include "link/MessageBuffer.h"
#include "notifications/RecentBodies.h"
#include "platform/Clock.h"
#include "records/HistoryStore.h"
#include "records/RecordDecoding.h"
#include "transfer/Base64.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace brenvale;

namespace {

struct FixedClock final : Clock {
    [[nodiscard]] double now() const override { return 1'700'000'000; }
    [[nodiscard]] double uptime() const override { return 1'700'000'000; }
};

std::string notificationText() {
    return R"({"app":"Messenger","title":"Ann Example","body":")" + std::string(130, 'b') +
           R"(","time":1700000000.123,"key":"0|com.example.messenger|1234567|null|10234"})";
}

std::string smsLogText(int count) {
    std::string text = R"({"action":"sms_history","messages":[)";
    for (int i = 0; i < count; ++i) {
        text += (i == 0 ? "" : ",") + std::string(R"({"address":"+4917012345)") + std::to_string(i % 300) +
                R"(","name":"Имя Фамилия","body":"Привет, wie geht es dir? 你好 )" + std::to_string(i) +
                R"(","date":1700000000000,"type":)" + std::to_string(1 + (i % 2)) + "}";
    }
    return text + "]}";
}

std::string chunkText() {
    return R"({"action":"file_chunk","fileName":"photo.jpg","fileData":")" + std::string(1'398'104, 'A') +
           R"(","isLast":false})";
}

void parse(benchmark::State& state, const std::string& text) {
    const MessageBuffer message(text);
    JsonReader reader;
    for (auto _ : state) {
        auto document = reader.parse(message);
        benchmark::DoNotOptimize(document);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(text.size()));
}

void parseNotification(benchmark::State& state) {
    parse(state, notificationText());
}
void parseFileChunk(benchmark::State& state) {
    parse(state, chunkText());
}
void parseSmsLog(benchmark::State& state) {
    parse(state, smsLogText(50'000));
}

void decodeNotification(benchmark::State& state) {
    const MessageBuffer message(notificationText());
    JsonReader reader;
    const FixedClock clock;
    for (auto _ : state) {
        const auto document = reader.parse(message);
        auto payload = decodeNotifPayload(*document->root().object(), clock);
        benchmark::DoNotOptimize(payload);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

void decodeSmsLog(benchmark::State& state) {
    const auto count = static_cast<int>(state.range(0));
    const MessageBuffer message(smsLogText(count));
    JsonReader reader;
    for (auto _ : state) {
        const auto document = reader.parse(message);
        auto log = decodeSmsHistoryMessage(*document->root().object());
        benchmark::DoNotOptimize(log);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * count);
}

void addToStore(benchmark::State& state) {
    HistoryStore store;
    const NotifPayload payload{.id = QUuid::createUuid(), .title = QStringLiteral("Ann")};
    for (auto _ : state) {
        store.add(payload);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

void rememberBody(benchmark::State& state) {
    RecentBodies bodies;
    double now = 0;
    qint64 number = 0;
    for (auto _ : state) {
        bodies.remember(QString::number(++number), QStringLiteral("identifier"), now += 0.0001);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

constexpr std::size_t chunkSize = 1'048'576;

/// Bytes of which every six bits are as likely, as in a compressed picture.
QByteArray chunkBytes() {
    QByteArray bytes(chunkSize, Qt::Uninitialized);
    std::minstd_rand random;
    std::ranges::generate(bytes, [&] { return static_cast<char>(random() >> 8 & 0xff); });
    return bytes;
}

/// Counts file contents, not their text.
void countChunk(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(chunkSize));
}

void decodeChunk(benchmark::State& state, const std::string& text, Base64Way way) {
    std::vector<char> bytes(base64DecodedCapacity(text.size()));
    for (auto _ : state) {
        auto size = decodeBase64(text, bytes.data(), way);
        benchmark::DoNotOptimize(size);
        benchmark::ClobberMemory();
    }
    countChunk(state);
}

void decodeBase64Clean(benchmark::State& state, Base64Way way) {
    decodeChunk(state, chunkBytes().toBase64().toStdString(), way);
}

void decodeBase64Lines(benchmark::State& state, Base64Way way) {
    const std::string clean = chunkBytes().toBase64().toStdString();
    std::string lines;
    for (std::size_t start = 0; start < clean.size(); start += 76) {
        lines += clean.substr(start, 76) + "\n";
    }
    decodeChunk(state, lines, way);
}

void encodeBase64Chunk(benchmark::State& state, Base64Way way) {
    const QByteArray bytes = chunkBytes();
    std::vector<char> text(base64EncodedSize(chunkSize));
    for (auto _ : state) {
        encodeBase64(bytes, text.data(), way);
        benchmark::ClobberMemory();
    }
    countChunk(state);
}

void appendBase64Chunk(benchmark::State& state) {
    const QByteArray bytes = chunkBytes();
    QByteArray text;
    text.reserve(static_cast<qsizetype>(base64EncodedSize(chunkSize)));
    for (auto _ : state) {
        text.resize(0);
        appendBase64(bytes, text);
        benchmark::ClobberMemory();
    }
    countChunk(state);
}

BENCHMARK(parseNotification);
BENCHMARK(parseFileChunk);
BENCHMARK(parseSmsLog)->Unit(benchmark::kMillisecond);
BENCHMARK(decodeNotification);
BENCHMARK(decodeSmsLog)->Arg(50'000)->Unit(benchmark::kMillisecond);
BENCHMARK(addToStore);
BENCHMARK(rememberBody);
BENCHMARK_CAPTURE(decodeBase64Clean, scalar, Base64Way::scalar);
BENCHMARK_CAPTURE(decodeBase64Clean, fastest, fastestBase64Way());
BENCHMARK_CAPTURE(decodeBase64Lines, scalar, Base64Way::scalar);
BENCHMARK_CAPTURE(decodeBase64Lines, fastest, fastestBase64Way());
BENCHMARK_CAPTURE(encodeBase64Chunk, scalar, Base64Way::scalar);
BENCHMARK_CAPTURE(encodeBase64Chunk, fastest, fastestBase64Way());
BENCHMARK(appendBase64Chunk);

} // namespace

BENCHMARK_MAIN();
