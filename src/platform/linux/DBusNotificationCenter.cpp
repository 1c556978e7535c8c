#include "platform/linux/DBusNotificationCenter.h"

#include "platform/DispatchQueue.h"
#include "platform/linux/CurrentDesktop.h"
#include "platform/linux/NotificationNames.h"
#include "platform/linux/NotificationText.h"
#include "platform/linux/NotifyCall.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QGuiApplication>

#include <chrono>

namespace brenvale {

namespace {

constexpr std::chrono::milliseconds repeatPause{1200};

/// A server that has answered nothing for so long stands still.
constexpr std::chrono::seconds stillAfter{5};

/// How many calls may be under way; more would only fill the bus's queue.
constexpr qsizetype maxCalling = 64;

/// Plasma's refusal of an exact repeat within a second. Either the notification is on show already, or it has
/// just been closed to make room for the repeat, which is then shown when the second is over.
constexpr auto alreadyShownError =
    QLatin1StringView("org.freedesktop.Notifications.Error.ExcessNotificationGeneration");

QDBusMessage methodCall(const QString& method) {
    return QDBusMessage::createMethodCall(notificationService, notificationPath, notificationService, method);
}

/// As much of the texts as the server may be given: what waits for it must not carry more.
void shorten(NotificationContent& content) {
    for (auto* text : {&content.title, &content.subtitle, &content.body, &content.threadIdentifier}) {
        if (text->size() > longestNotificationText) {
            *text = text->left(longestNotificationText + 1); // one more, by which it is seen to be cut
        }
    }
}

} // namespace

DBusNotificationCenter::DBusNotificationCenter(DispatchQueue& main, const ChildPrograms& programs)
    : main_(main), authorization_(programs) {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    bus.connect(notificationService, notificationPath, notificationService,
                QStringLiteral("NotificationClosed"), this, SLOT(notificationClosed(uint, uint)));
    auto* watcher =
        new QDBusServiceWatcher(notificationService, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &DBusNotificationCenter::ownerChanged);
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
    shorten(request.content);
    main_.async([this, show = Show{std::move(request), std::move(completion)}]() mutable {
        enqueue(std::move(show));
    });
}

void DBusNotificationCenter::removeDelivered(const QList<RequestIdentifier>& identifiers) {
    main_.async([this, identifiers] {
        for (const auto& identifier : identifiers) {
            if (const Close close{identifier}; changesSomething(close)) {
                waiting_.add(close);
            }
        }
        takeNext();
    });
}

void DBusNotificationCenter::removePending(const QList<RequestIdentifier>& identifiers) {
    main_.async([this, identifiers] {
        for (const auto& identifier : identifiers) {
            for (auto& show : waiting_.takeShows(identifier)) {
                show.complete({});
            }
            for (auto paused = pausing_.begin(); paused != pausing_.end();) {
                const auto each = paused++;
                if (each->second.request.identifier == identifier) {
                    each->second.complete({});
                    pausing_.erase(each);
                }
            }
        }
    });
}

void DBusNotificationCenter::enqueue(Show show) {
    waiting_.add(std::move(show));
    for (auto& excess : waiting_.takeExcess(standsStill())) {
        excess.complete(QStringLiteral("too many notifications are waiting"));
    }
    takeNext();
}

void DBusNotificationCenter::takeNext() {
    if (!QDBusConnection::sessionBus().isConnected()) {
        for (auto& show : waiting_.takeAll()) {
            show.complete(QStringLiteral("there is no session bus"));
        }
        return;
    }
    while (canTakeNext()) {
        if (serverState_ == ServerState::unknown) {
            askCapabilities();
            return;
        }
        auto step = waiting_.takeFront();
        if (auto* toShow = std::get_if<Show>(&step)) {
            show(std::move(*toShow));
        } else {
            close(std::get<Close>(step));
        }
    }
}

bool DBusNotificationCenter::canTakeNext() const {
    return !waiting_.isEmpty() && serverState_ != ServerState::asked && calling_.size() < maxCalling &&
           !calling_.contains(waiting_.front());
}

bool DBusNotificationCenter::standsStill() const {
    return underWay_ > 0 && std::chrono::steady_clock::now() - heardFrom_ > stillAfter;
}

bool DBusNotificationCenter::changesSomething(const Close& close) const {
    return shown_.serverId(close.identifier) != 0 || calling_.contains(close.identifier);
}

void DBusNotificationCenter::askCapabilities() {
    serverState_ = next(serverState_, ServerEvent::ask);
    call(methodCall(QStringLiteral("GetCapabilities")),
         [this](const QDBusMessage& answer) { capabilitiesAnswered(answer); });
}

void DBusNotificationCenter::capabilitiesAnswered(const QDBusMessage& answer) {
    const bool hasTold = answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty();
    const auto list = hasTold ? answer.arguments().constFirst().toStringList() : QStringList();
    capabilities_ = QSet<QString>(list.begin(), list.end());
    if (QGuiApplication::platformName() == u"offscreen") {
        capabilities_.remove(QStringLiteral("actions")); // nobody would see what they open
    }
    serverState_ = next(serverState_, hasTold ? ServerEvent::told : ServerEvent::notTold);
}

QDBusMessage DBusNotificationCenter::notifyMessage(const NotificationRequest& request) const {
    const auto& content = request.content;
    const auto call = notifyCall(content, replies_.category(content.categoryIdentifier), capabilities_,
                                 currentDesktop().contains(QStringLiteral("GNOME")));
    auto message = methodCall(QStringLiteral("Notify"));
    message << QStringLiteral("Brenvale") << shown_.serverId(request.identifier) << QStringLiteral("phone")
            << notificationSummary(content) << call.body << call.actions << call.hints << -1;
    return message;
}

void DBusNotificationCenter::show(Show show) {
    const auto message = notifyMessage(show.request);
    show.state = next(show.state, RequestEvent::sent);
    serverState_ = next(serverState_, ServerEvent::requestSent);
    calling_.insert(show.request.identifier);
    call(message, [this, server = server_, show = std::move(show)](const QDBusMessage& answer) mutable {
        calling_.remove(show.request.identifier);
        showAnswered(std::move(show), server, answer);
    });
}

/// `server` is the one that was called.
RequestEvent DBusNotificationCenter::eventOf(const Show& show, uint server,
                                             const QDBusMessage& answer) const {
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
        return RequestEvent::taken;
    }
    if (answer.errorName() == alreadyShownError) {
        return shown_.serverId(show.request.identifier) != 0 ? RequestEvent::alreadyShown
                                                             : RequestEvent::repeat;
    }
    return server != server_ ? RequestEvent::serverGone : RequestEvent::refused;
}

void DBusNotificationCenter::showAnswered(Show show, uint server, const QDBusMessage& answer) {
    const auto event = eventOf(show, server, answer);
    show.state = next(show.state, event);
    if (event == RequestEvent::taken &&
        server == server_) { // else the number is one of a server that is gone
        shown_.insert(show.request, answer.arguments().constFirst().toUInt());
    }
    switch (show.state) {
    case RequestState::waitingAgain:
        waiting_.add(std::move(show)); // where it was, before all that came later
        break;
    case RequestState::pausing:
        showLater(std::move(show));
        break;
    case RequestState::failed:
        show.complete(answer.errorMessage());
        break;
    default:
        show.complete({});
    }
}

void DBusNotificationCenter::showLater(Show show) {
    const auto place = show.place;
    pausing_.emplace(place, std::move(show));
    main_.asyncAfter(repeatPause, [this, place] {
        if (auto paused = pausing_.extract(place)) { // else it was taken back
            paused.mapped().place = 0;
            enqueue(std::move(paused.mapped()));
        }
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
    if (underWay_++ == 0) {
        heardFrom_ = std::chrono::steady_clock::now();
    }
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, answered = std::make_shared<decltype(answered)>(std::move(answered))](
                QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                const auto answer = finished->reply();
                --underWay_;
                if (answer.errorName() != QDBusError::errorString(QDBusError::NoReply)) {
                    heardFrom_ = std::chrono::steady_clock::now();
                }
                (*answered)(answer);
                takeNext();
            });
}

void DBusNotificationCenter::notificationClosed(uint serverId, uint /*reason*/) {
    shown_.closed(serverId);
}

void DBusNotificationCenter::ownerChanged() {
    ++server_;
    serverState_ = next(serverState_, ServerEvent::ownerChanged);
    shown_.clear();
}

} // namespace brenvale
