#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace brenvale {

/// Keeps an observer subscribed for as long as it is held.
using Subscription = std::shared_ptr<const void>;

/// A value whose observers are told of every write, whether it changes anything or not. One thread.
template <typename Value>
class Published {
public:
    using Observer = std::function<void(const Value&)>;

    Published() = default;
    explicit Published(Value value) : value_(std::move(value)) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    [[nodiscard]] const Value& get() const { return value_; }

    /// Tells the observers of `value`, then makes it the current one: in an observer `get` still gives the
    /// old one.
    void set(Value value) {
        std::erase_if(observers_, [](const auto& weak) { return weak.expired(); });
        const auto observers = observers_; // an observer may subscribe or leave
        for (const auto& weak : observers) {
            if (const auto observer = weak.lock()) {
                (*observer)(value);
            }
        }
        value_ = std::move(value);
    }

    /// Calls `observer` with the current value at once, and with each value to come.
    [[nodiscard]] Subscription subscribe(Observer observer) {
        observer(value_);
        auto shared = std::make_shared<const Observer>(std::move(observer));
        std::erase_if(observers_, [](const auto& weak) { return weak.expired(); });
        observers_.push_back(shared);
        return shared;
    }

    /// Changes the value in place while nobody observes, which saves the copy that a `set` would need.
    template <typename Change>
    void update(Change change) {
        if (observers_.empty()) {
            change(value_);
        } else {
            Value next = value_;
            change(next);
            set(std::move(next));
        }
    }

private:
    Value value_{};
    std::vector<std::weak_ptr<const Observer>> observers_;
};

} // namespace brenvale
