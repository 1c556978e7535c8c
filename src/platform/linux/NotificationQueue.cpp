#include "platform/linux/NotificationQueue.h"

#include <algorithm>
#include <utility>

namespace brenvale {

namespace {

/// What a notification takes beside its texts, about.
constexpr qsizetype overhead = 500;

qsizetype bytesOf(const NotificationRequest& request) {
    const auto& content = request.content;
    const auto characters = content.title.size() + content.subtitle.size() + content.body.size() +
                            content.threadIdentifier.size();
    // An identifier that is joined shares its parts with these; only a key of the phone's own takes more.
    const auto more = std::max<qsizetype>(0, request.identifier.size() - characters);
    return overhead + ((characters + more) * qsizetype{sizeof(char16_t)});
}

const RequestIdentifier& identifierOf(const NotificationQueue::Step& step) {
    const auto* show = std::get_if<NotificationQueue::Show>(&step);
    return show != nullptr ? show->request.identifier : std::get<NotificationQueue::Close>(step).identifier;
}

} // namespace

void NotificationQueue::Show::complete(const std::optional<QString>& error) {
    if (completion) {
        completion(error);
    }
}

void NotificationQueue::add(Show show) {
    const auto place = show.place != 0 ? show.place : ++lastPlace_;
    show.place = place;
    bytes_ += bytesOf(show.request);
    ++showCount_;
    put(place, std::move(show));
}

void NotificationQueue::add(Close close) {
    const auto places = places_.values(close.identifier);
    if (!places.isEmpty() && std::holds_alternative<Close>(steps_.at(std::ranges::max(places)))) {
        return; // it goes away already
    }
    put(++lastPlace_, std::move(close));
}

void NotificationQueue::put(quint64 place, Step step) {
    places_.insert(identifierOf(step), place);
    steps_.emplace(place, std::move(step));
}

const RequestIdentifier& NotificationQueue::front() const {
    return identifierOf(steps_.begin()->second);
}

NotificationQueue::Step NotificationQueue::takeFront() {
    return take(steps_.begin());
}

NotificationQueue::Step NotificationQueue::take(Steps::iterator step) {
    auto taken = steps_.extract(step);
    places_.remove(identifierOf(taken.mapped()), taken.key());
    if (const auto* show = std::get_if<Show>(&taken.mapped())) {
        bytes_ -= bytesOf(show->request);
        --showCount_;
    }
    return std::move(taken.mapped());
}

std::vector<NotificationQueue::Show> NotificationQueue::takeShows(const RequestIdentifier& identifier) {
    std::vector<Show> shows;
    for (const auto place : places_.values(identifier)) {
        if (const auto step = steps_.find(place); std::holds_alternative<Show>(step->second)) {
            shows.push_back(std::get<Show>(take(step)));
        }
    }
    return shows;
}

std::vector<NotificationQueue::Show> NotificationQueue::takeExcess(bool serverStandsStill) {
    std::vector<Show> shows;
    const auto isTooMuch = [&] {
        return (serverStandsStill && showCount_ > maxWaiting) || (bytes_ > maxBytes && showCount_ > 1);
    };
    for (auto step = steps_.begin(); isTooMuch();) {
        const auto oldest = step++;
        if (std::holds_alternative<Show>(oldest->second)) {
            shows.push_back(std::get<Show>(take(oldest)));
        }
    }
    return shows;
}

std::vector<NotificationQueue::Show> NotificationQueue::takeAll() {
    std::vector<Show> shows;
    for (auto& [place, step] : std::exchange(steps_, {})) {
        if (auto* show = std::get_if<Show>(&step)) {
            shows.push_back(std::move(*show));
        }
    }
    places_.clear();
    showCount_ = 0;
    bytes_ = 0;
    return shows;
}

} // namespace brenvale
