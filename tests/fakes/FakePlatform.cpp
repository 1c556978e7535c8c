#include "fakes/FakePlatform.h"

#include <algorithm>

namespace brenvale {

AccessibilityTrust::State FakeAccessibilityTrust::state() const {
    if (isTrusted) {
        return State::trusted;
    }
    return isAskable ? State::toBeAsked : State::impossible;
}

bool FakeAccessibilityTrust::isProcessTrusted(bool prompt) {
    prompts += prompt ? 1 : 0;
    if (asked) {
        asked();
    }
    return isTrusted;
}

Subscription FakeAccessibilityTrust::observe(std::function<void()> observer) {
    return change_.subscribe([observer = std::move(observer)](const auto&) { observer(); });
}

void FakeAccessibilityTrust::change(bool trusted) {
    isTrusted = trusted;
    change_.set({});
}

Subscription FakeAddressWatch::observe(std::function<void()> observer) {
    auto shared = std::make_shared<const std::function<void()>>(std::move(observer));
    observer_ = shared;
    return shared;
}

bool FakeAddressWatch::change() const {
    const auto observer = observer_.lock();
    if (observer) {
        (*observer)();
    }
    return observer != nullptr;
}

void FakeAlerts::runModal(const Alert& alert, Answer answer) {
    shown.push_back(alert);
    answer_ = std::move(answer);
}

void FakeAlerts::respond(int response) {
    std::exchange(answer_, {})(response);
}

void RecordingLog::line(QByteArrayView text) {
    const std::scoped_lock lock(mutex_);
    lines_.append(text.toByteArray());
}

QByteArrayList RecordingLog::lines() const {
    const std::scoped_lock lock(mutex_);
    return {lines_.begin(), lines_.end()}; // a list of its own: the original may grow in another thread
}

qsizetype RecordingLog::count(const QByteArray& part) const {
    const std::scoped_lock lock(mutex_);
    return std::ranges::count_if(lines_, [&part](const QByteArray& line) { return line.contains(part); });
}

std::expected<void, QString> FakeLoginItem::set(bool value) {
    if (!error.isEmpty()) {
        return std::unexpected(error);
    }
    enabled = value;
    return {};
}

void FakeStatusItem::setMenu(std::vector<MenuItem> next) {
    rows = std::move(next);
    if (menuSet) {
        menuSet();
    }
}

void FakeStatusItem::setTitle(int tag, const QString& title) {
    const auto row = std::ranges::find(rows, tag, &MenuItem::tag);
    if (row != rows.end()) {
        row->title = title;
    }
}

void FakeStatusItem::choose(const QString& title) const {
    const auto row = std::ranges::find(rows, title, &MenuItem::title);
    if (row != rows.end() && row->action) {
        row->action();
    }
}

void FakePasteboard::clearContents() {
    calls.append(QStringLiteral("clear"));
}

void FakePasteboard::setString(const QString& text) {
    calls.append(QStringLiteral("set:") + text);
}

void FakePasteboard::string(TextAnswer answer) {
    if (isSlow) {
        waiting_.push_back(std::move(answer));
    } else {
        answer(contents);
    }
}

void FakePasteboard::answerAll() {
    for (auto& answer : std::exchange(waiting_, {})) {
        answer(contents);
    }
}

qint64 FakeUserDefaults::integer(QStringView key) const {
    const std::scoped_lock lock(mutex_);
    return integers_.value(key.toString());
}

bool FakeUserDefaults::contains(QStringView key) const {
    const std::scoped_lock lock(mutex_);
    return integers_.contains(key.toString());
}

std::expected<SettingsSections, QString> FakeUserDefaults::sections() const {
    const std::scoped_lock lock(mutex_);
    if (!sectionError_.isEmpty()) {
        return std::unexpected(sectionError_);
    }
    auto sections = sections_;
    for (auto integer = integers_.begin(); integer != integers_.end(); ++integer) {
        sections[QStringLiteral("General")].insert(integer.key(), QString::number(integer.value()));
    }
    return sections;
}

Subscription FakeUserDefaults::observe(std::function<void()> observer) {
    return change_.subscribe([observer = std::move(observer)](const auto&) { observer(); });
}

void FakeUserDefaults::set(const QString& key, qint64 value) {
    {
        const std::scoped_lock lock(mutex_);
        integers_.insert(key, value);
    }
    change_.set({});
}

void FakeUserDefaults::setSection(const QString& name, const QMultiMap<QString, QString>& values) {
    const std::scoped_lock lock(mutex_);
    sections_.insert(name, values);
}

void FakeUserDefaults::failSections(const QString& error) {
    const std::scoped_lock lock(mutex_);
    sectionError_ = error;
}

void FakeNotificationCenter::setDelegate(UserNotificationCenterDelegate* next) {
    delegate = next;
    calls.append(QStringLiteral("setDelegate"));
}

void FakeNotificationCenter::setNotificationCategories(QList<NotificationCategory> next) {
    categories = std::move(next);
    calls.append(QStringLiteral("setNotificationCategories"));
}

void FakeNotificationCenter::getNotificationSettings(SettingsAnswer answer) {
    calls.append(QStringLiteral("getNotificationSettings"));
    answer(status);
}

void FakeNotificationCenter::requestAuthorization(AuthorizationAnswer answer) {
    calls.append(QStringLiteral("requestAuthorization"));
    answer(isGranted, authorizationError);
}

void FakeNotificationCenter::add(NotificationRequest request, Completion completion) {
    removeShown(request.identifier);
    calls.append(QStringLiteral("add:") + request.identifier.text());
    added.push_back(request);
    if (error) {
        if (completion) {
            completion(error);
        }
        return;
    }
    shown.push_back(std::move(request));
    if (completion) {
        completion({});
    }
}

void FakeNotificationCenter::removeDelivered(const QList<RequestIdentifier>& identifiers) {
    for (const auto& identifier : identifiers) {
        calls.append(QStringLiteral("removeDelivered:") + identifier.text());
        removeShown(identifier);
    }
}

void FakeNotificationCenter::removePending(const QList<RequestIdentifier>& identifiers) {
    for (const auto& identifier : identifiers) {
        calls.append(QStringLiteral("removePending:") + identifier.text());
    }
}

QStringList FakeNotificationCenter::titles() const {
    QStringList titles;
    for (const auto& request : shown) {
        titles.append(request.content.title);
    }
    return titles;
}

void FakeNotificationCenter::removeShown(const RequestIdentifier& identifier) {
    std::erase_if(shown, [&](const auto& request) { return request.identifier == identifier; });
}

FakePlatform::FakePlatform() = default;
FakePlatform::~FakePlatform() = default;

} // namespace brenvale
