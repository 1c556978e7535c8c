#pragma once

#include <QByteArray>
#include <QTemporaryFile>

#include <cstddef>
#include <memory>

namespace brenvale {

/// The text (UTF-8) of one message on its way out, held once for all connections that it goes to.
class OutgoingText {
public:
    virtual ~OutgoingText() = default;

    /// The text itself; empty where it cannot be read back from where it waits.
    [[nodiscard]] virtual QByteArray bytes() const = 0;
};

/// Counts the memory of the texts that wait. When the last one is gone, what many of them took goes back to
/// the system.
class OutgoingMemory {
public:
    void add(std::size_t bytes);
    void subtract(std::size_t bytes);
    [[nodiscard]] std::size_t use() const { return use_; }

private:
    std::size_t use_ = 0;
    std::size_t peak_ = 0; ///< since `use_` was last 0
};

/// Keeps the texts of files that wait to be sent: in memory up to a limit, beyond it in a temporary file
/// without a name, which goes with the last text in it. Where such a file can't be written, memory has to do.
/// One thread, and so have its texts.
class OutgoingSpool {
public:
    explicit OutgoingSpool(std::size_t memoryLimit = defaultMemoryLimit) : memoryLimit_(memoryLimit) {}

    [[nodiscard]] std::shared_ptr<const OutgoingText> add(QByteArray text);

    /// Bytes of text that are in memory now.
    [[nodiscard]] std::size_t memoryUse() const { return memory_->use(); }

private:
    static constexpr std::size_t defaultMemoryLimit = std::size_t{256} << 20;

    [[nodiscard]] std::shared_ptr<const OutgoingText> addToFile(const QByteArray& text);

    std::size_t memoryLimit_;
    std::shared_ptr<OutgoingMemory> memory_ = std::make_shared<OutgoingMemory>();
    std::weak_ptr<QTemporaryFile> file_;
};

/// A text in memory.
[[nodiscard]] std::shared_ptr<const OutgoingText> makeOutgoingText(QByteArray text);

} // namespace brenvale
