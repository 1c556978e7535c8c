#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <optional>

namespace brenvale {

/// A descriptor that is closed in the end.
class OwnedDescriptor {
public:
    explicit OwnedDescriptor(int descriptor) : descriptor_(descriptor) {}
    ~OwnedDescriptor();
    OwnedDescriptor(const OwnedDescriptor&) = delete;
    OwnedDescriptor& operator=(const OwnedDescriptor&) = delete;

    [[nodiscard]] int get() const { return descriptor_; }

private:
    int descriptor_;
};

/// Reads a pipe to its end from the event loop. One that brings nothing for some seconds, or too much, brings
/// nothing at all.
class PipeReader final : public QObject {
public:
    /// Takes the descriptor over. `finished` is called once, and does not destroy this.
    PipeReader(int descriptor, std::function<void(std::optional<QByteArray>)> finished);

private:
    void read();
    void finish(std::optional<QByteArray> bytes);

    OwnedDescriptor descriptor_;
    QSocketNotifier arrival_;
    QTimer patience_; ///< starts anew with each piece
    QTimer limit_;    ///< however many pieces come
    QByteArray bytes_;
    std::function<void(std::optional<QByteArray>)> finished_;
};

/// Writes into a pipe from the event loop, as fast as it is read. One that is not read for long, or that
/// somebody closes, is given up.
class PipeWriter final : public QObject {
public:
    /// Takes the descriptor over. `finished` is called once, and does not destroy this.
    PipeWriter(int descriptor, QByteArray bytes, std::function<void()> finished);

private:
    void write();
    void finish();

    OwnedDescriptor descriptor_;
    QSocketNotifier room_;
    QTimer patience_;
    QByteArray bytes_;
    qsizetype written_ = 0;
    std::function<void()> finished_;
};

} // namespace brenvale
