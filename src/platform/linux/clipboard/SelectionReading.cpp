#include "platform/linux/clipboard/SelectionReading.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <memory>
#include <utility>

namespace brenvale {

namespace {

// A picture is offered in dozens of formats that its owner makes only when asked.
constexpr qsizetype mostFormats = 16;
constexpr qsizetype mostBytes = 64 << 20;

/// The way through an owner's formats, one after another.
struct Copying {
    SelectionAccess* access;
    Selection selection;
    QDeadlineTimer deadline;
    QByteArrayList waiting;
    qsizetype bytes = 0;
    ClipboardContents contents;
    std::move_only_function<void(ClipboardContents)> answer;
};

void copyNext(const std::shared_ptr<Copying>& copying) {
    if (copying->waiting.isEmpty() || copying->deadline.hasExpired()) {
        copying->answer(std::move(copying->contents));
        return;
    }
    const auto format = copying->waiting.takeFirst();
    copying->access->read(copying->selection, format, [copying, format](std::optional<QByteArray> bytes) {
        if (bytes && copying->bytes + bytes->size() <= mostBytes) {
            copying->bytes += bytes->size();
            copying->contents.items.push_back({.format = format, .bytes = *std::move(bytes)});
        }
        copyNext(copying);
    });
}

} // namespace

void readText(SelectionAccess& access, Selection selection,
              std::move_only_function<void(std::optional<QString>)> answer) {
    access.readFormats(
        selection, [&access, selection, answer = std::move(answer)](const QByteArrayList& formats) mutable {
            const auto format = textFormatAmong(formats);
            if (!format) {
                answer(std::nullopt);
                return;
            }
            access.read(selection, *format,
                        [format = *format,
                         answer = std::move(answer)](const std::optional<QByteArray>& bytes) mutable {
                            answer(bytes ? std::optional(decodedText(format, *bytes)) : std::nullopt);
                        });
        });
}

void readContents(SelectionAccess& access, Selection selection, std::chrono::milliseconds patience,
                  std::move_only_function<void(ClipboardContents)> answer) {
    auto copying = std::make_shared<Copying>(Copying{.access = &access,
                                                     .selection = selection,
                                                     .deadline = QDeadlineTimer(patience),
                                                     .answer = std::move(answer)});
    access.readFormats(selection, [copying](QByteArrayList formats) {
        formats.removeIf([](const QByteArray& format) { return !isContentsFormat(format); });
        if (const auto text = textFormatAmong(formats)) {
            formats.move(formats.indexOf(*text), 0);
        }
        copying->waiting = formats.mid(0, mostFormats);
        copyNext(copying);
    });
}

} // namespace brenvale
