#include "platform/linux/DBusNotificationCenter.h"

#include "platform/DispatchQueue.h"
#include "platform/linux/CurrentDesktop.h"
#include "platform/linux/NotificationText.h"
#include "platform/linux/NotifyCall.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QGuiApplication>

#include <algorithm>
#include <chrono>

namespace brenvale {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");

/// How many requests may wait for a slow server; beyond that the oldest ones fail.
constexpr std::size_t maxWaiting = 1000;

constexpr std::chrono::milliseconds repeatPause{1200};

/// How many calls may be under way; more would only fill the bus's queue.
constexpr qsizetype maxCalling = 64;

/// Plasma's refusal of an exact repeat within a second. Either the notification is on show already, or it has
/// just been closed to make room for the repeat, which is then shown when the second is over.
constexpr auto alreadyShownError =
    QLatin1StringView("org.freedesktop.Notifications.Error.ExcessNotificationGeneration");

QDBusMessage methodCall(const QString& method) {
    return QDBusMessage::createMethodCall(service, path, service, method);
}

} // namespace

DBusNotificationCenter::DBusNotificationCenter(DispatchQueue& main) : main_(main) {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    bus.connect(service, path, service, QStringLiteral("NotificationClosed"), this,
                SLOT(notificationClosed(uint, uint)));
    auto* watcher = new QDBusServiceWatcher(service, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &DBusNotificationCenter::serverChanged);
}

DBusNotificationCenter::~DBusNotificationCenter() = default;

void DBusNotificationCenter::setDelegate(UserNotificationCenterDelegate* delegate) {
    main_.async([this, delegate] { replies_.setDelegate(delegate); });
}

void DBusNotificationCenter::setNotificationCategories(QList<NotificationCategory> categories) {
    main_.async([this, categories = std::move(categories)]() mutable {
        replies_.setCategories(std::move(categories));
    });
}

void DBusNotificationCenter::getNotificationSettings(SettingsAnswer answer) {
    main_.async(
        [this, answer = std::move(answer)]() mutable { authorization_.readStatus(std::move(answer)); });
}

void DBusNotificationCenter::requestAuthorization(AuthorizationAnswer answer) {
    main_.async([this, answer = std::move(answer)]() mutable { authorization_.request(std::move(answer)); });
}

void DBusNotificationCenter::add(NotificationRequest request, Completion completion) {
    main_.async([this, show = Show{std::move(request), std::move(completion)}]() mutable {
        enqueue(std::move(show));
        takeNext();
    });
}

void DBusNotificationCenter::removeDelivered(const QStringList& identifiers) {
    main_.async([this, identifiers] {
        for (const auto& identifier : identifiers) {
            waiting_.emplace_back(Close{identifier});
        }
        takeNext();
    });
}

void DBusNotificationCenter::removePending(const QStringList& identifiers) {
    main_.async([this, identifiers] {
        std::erase_if(waiting_, [&identifiers](Step& step) {
            auto* show = std::get_if<Show>(&step);
            if (show == nullptr || !identifiers.contains(show->request.identifier)) {
                return false;
            }
            show->complete({});
            return true;
        });
    });
}

void DBusNotificationCenter::Show::complete(const std::optional<QString>& error) {
    if (completion) {
        completion(error);
    }
}

void DBusNotificationCenter::enqueue(Show show) {
    if (waiting_.size() >= maxWaiting) {
        auto* oldest = std::get_if<Show>(&waiting_.front());
        if (oldest != nullptr) {
            oldest->complete(QStringLiteral("too many notifications are waiting"));
        }
        waiting_.pop_front();
    }
    waiting_.emplace_back(std::move(show));
}

void DBusNotificationCenter::takeNext() {
    if (!QDBusConnection::sessionBus().isConnected()) {
        failWaiting(QStringLiteral("there is no session bus"));
        return;
    }
    while (!waiting_.empty() && canTake(waiting_.front())) {
        if (!capabilities_) {
            readCapabilities();
            return;
        }
        auto step = std::move(waiting_.front());
        waiting_.pop_front();
        if (auto* next = std::get_if<Show>(&step)) {
            show(std::move(*next));
        } else {
            close(std::get<Close>(step));
        }
    }
}

bool DBusNotificationCenter::canTake(const Step& step) const {
    const auto* show = std::get_if<Show>(&step);
    const auto& identifier = show != nullptr ? show->request.identifier : std::get<Close>(step).identifier;
    return !isAskingCapabilities_ && calling_.size() < maxCalling && !calling_.contains(identifier);
}

void DBusNotificationCenter::failWaiting(const QString& error) {
    for (auto& step : std::exchange(waiting_, {})) {
        auto* show = std::get_if<Show>(&step);
        if (show != nullptr) {
            show->complete(error);
        }
    }
}

void DBusNotificationCenter::readCapabilities() {
    isAskingCapabilities_ = true;
    call(methodCall(QStringLiteral("GetCapabilities")), [this](const QDBusMessage& answer) {
        isAskingCapabilities_ = false;
        const bool hasAnswered = answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty();
        const auto list = hasAnswered ? answer.arguments().constFirst().toStringList() : QStringList();
        capabilities_ = QSet<QString>(list.begin(), list.end());
        if (QGuiApplication::platformName() == u"offscreen") {
            capabilities_->remove(QStringLiteral("actions")); // nobody would see what they open
        }
        areCapabilitiesGuessed_ = !hasAnswered;
    });
}

QDBusMessage DBusNotificationCenter::notifyMessage(const NotificationRequest& request) const {
    const auto& content = request.content;
    const auto call = notifyCall(content, replies_.category(content.categoryIdentifier),
                                 capabilities_.value_or(QSet<QString>()),
                                 currentDesktop().contains(QStringLiteral("GNOME")));
    auto message = methodCall(QStringLiteral("Notify"));
    message << QStringLiteral("Brenvale") << shown_.serverId(request.identifier) << QStringLiteral("phone")
            << notificationSummary(content) << call.body << call.actions << call.hints << -1;
    return message;
}

void DBusNotificationCenter::show(Show show) {
    const auto message = notifyMessage(show.request);
    if (areCapabilitiesGuessed_) {
        capabilities_.reset(); // there may be a server that tells them by the time of the next request
    }
    retries_ = 0;
    calling_.insert(show.request.identifier);
    call(message,
         [this, generation = generation_, show = std::move(show)](const QDBusMessage& answer) mutable {
             calling_.remove(show.request.identifier);
             showAnswered(std::move(show), generation, answer);
         });
}

void DBusNotificationCenter::showAnswered(Show show, uint generation, const QDBusMessage& answer) {
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
        if (generation == generation_) { // else the number is one of a server that is gone
            shown_.insert(show.request, answer.arguments().constFirst().toUInt());
        }
    } else if (generation != generation_ && !show.isSecondTry) {
        // The server went away while it had the request; the one that follows it gets it again, in the old
        // order.
        show.isSecondTry = true;
        waiting_.emplace(waiting_.begin() + std::min<std::ptrdiff_t>(retries_++, std::ssize(waiting_)),
                         std::move(show));
        return;
    } else if (answer.errorName() == alreadyShownError) {
        if (shown_.serverId(show.request.identifier) == 0 && !show.isSecondTry) {
            showLater(std::move(show));
            return;
        }
    } else {
        show.complete(answer.errorMessage());
        return;
    }
    show.complete({});
}

void DBusNotificationCenter::showLater(Show show) {
    show.isSecondTry = true;
    main_.asyncAfter(repeatPause, [this, show = std::move(show)]() mutable {
        enqueue(std::move(show));
        takeNext();
    });
}

void DBusNotificationCenter::close(const Close& close) {
    const auto serverId = shown_.serverId(close.identifier);
    if (serverId == 0) {
        return;
    }
    shown_.closed(serverId);
    auto message = methodCall(QStringLiteral("CloseNotification"));
    message << serverId;
    call(message, [](const QDBusMessage&) {}); // a notification that is gone already is no error
}

void DBusNotificationCenter::call(const QDBusMessage& message,
                                  std::move_only_function<void(const QDBusMessage&)> answered) {
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, answered = std::make_shared<decltype(answered)>(std::move(answered))](
                QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                (*answered)(finished->reply());
                takeNext();
            });
}

void DBusNotificationCenter::notificationClosed(uint serverId, uint /*reason*/) {
    shown_.closed(serverId);
}

void DBusNotificationCenter::serverChanged() {
    ++generation_;
    retries_ = 0;
    capabilities_.reset();
    shown_.clear();
}

} // namespace brenvale
