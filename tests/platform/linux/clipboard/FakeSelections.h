#pragma once

#include "platform/linux/clipboard/SelectionAccess.h"

#include <array>
#include <deque>
#include <utility>

namespace brenvale {

/// Two selections in memory. What others own is given when the test says so.
class FakeSelections final : public SelectionAccess {
public:
    void own(Selection selection, ClipboardContents contents) override {
        auto& side = at(selection);
        side.foreign = {};
        side.ours.reset();
        if (!contents.items.empty()) {
            side.ours = std::move(contents);
        }
    }

    [[nodiscard]] const ClipboardContents* owned(Selection selection) const override {
        const auto& ours = sides_.at(std::to_underlying(selection)).ours;
        return ours ? &*ours : nullptr;
    }

    void readFormats(Selection selection, Formats answer) override {
        const auto& side = at(selection);
        answer((side.ours ? *side.ours : side.foreign).formats());
    }

    void read(Selection selection, const QByteArray& format, Bytes answer) override {
        reads.append(format);
        const auto& side = at(selection);
        const auto* bytes = (side.ours ? *side.ours : side.foreign).find(format);
        auto given = bytes != nullptr && !refused.contains(format) ? std::optional(*bytes) : std::nullopt;
        if (isSlow) {
            waiting.emplace_back(
                [answer = std::move(answer), given = std::move(given)]() mutable { answer(given); });
        } else {
            answer(std::move(given));
        }
    }

    void settle(std::move_only_function<void()> answer) override { answer(); }

    /// Another program puts this there.
    void copy(Selection selection, ClipboardContents contents) {
        at(selection) = {.ours = std::nullopt, .foreign = std::move(contents)};
    }

    void giveNext() {
        auto next = std::move(waiting.front());
        waiting.pop_front();
        next();
    }

    QByteArrayList reads;   ///< the formats that were asked for
    QByteArrayList refused; ///< the owner offers these, and gives nothing
    bool isSlow = false;
    std::deque<std::move_only_function<void()>> waiting;

private:
    struct Side {
        std::optional<ClipboardContents> ours;
        ClipboardContents foreign;
    };

    Side& at(Selection selection) { return sides_.at(std::to_underlying(selection)); }

    std::array<Side, 2> sides_;
};

} // namespace brenvale
