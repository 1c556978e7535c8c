#pragma once

#include <QByteArray>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace brenvale {

/// Lines on their way to a descriptor, each whole and in order. A line is out when the call returns, unless
/// the reader has stopped reading: that holds up nobody. What waits for it is bounded: beyond that the oldest
/// lines go, and one line in their place says how many. A reader that has gone away is no error. Any thread.
class LineWriter {
public:
    static constexpr qsizetype usualBound = 4 << 20;
    static constexpr std::chrono::milliseconds usualPatience{2000};
    static constexpr std::chrono::milliseconds usualLimit{5000};

    /// `descriptor` must stay open. `bound` counts the bytes that wait.
    explicit LineWriter(int descriptor, qsizetype bound = usualBound);

    /// What the reader takes in `flush` is still written.
    ~LineWriter();
    LineWriter(const LineWriter&) = delete;
    LineWriter& operator=(const LineWriter&) = delete;

    /// Returns at once, whatever the reader does.
    void line(QByteArrayView text);

    /// Waits until all lines have left, but no longer than `patience` for a reader that takes nothing, and
    /// than `limit` for one that takes little, or lines that go on to come.
    void flush(std::chrono::milliseconds patience = usualPatience,
               std::chrono::milliseconds limit = usualLimit);

private:
    [[nodiscard]] QByteArrayView writeAtOnce(QByteArrayView text) const;
    void keepWaiting(const QByteArray& line);
    void run();
    [[nodiscard]] QByteArray takeWaiting();
    void write(QByteArrayView text);
    [[nodiscard]] bool waitForReader() const;
    void wrote();

    int descriptor_;
    bool isOwn_ = false;       ///< opened here, so that no write to it ever waits
    bool takesAtOnce_ = false; ///< no write to it waits for a reader
    qsizetype bound_;
    int end_; ///< an eventfd that ends the wait for a reader
    std::mutex mutex_;
    std::condition_variable changed_;
    QByteArray begun_; ///< the rest of a line; this and all below: under `mutex_`
    std::deque<QByteArray> waiting_;
    qsizetype size_ = 0;     ///< bytes of `waiting_`
    quint64 leftOut_ = 0;    ///< lines that had to go since the last ones were taken
    quint64 progress_ = 0;   ///< counts what the reader took
    bool isWriting_ = false; ///< the thread has something that comes before `waiting_`
    bool isEnding_ = false;
    std::thread thread_; ///< writes what waits; made when something does
};

} // namespace brenvale
