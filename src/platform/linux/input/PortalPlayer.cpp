#include "platform/linux/input/PortalPlayer.h"

#include "platform/linux/input/PortalNames.h"
#include "platform/linux/input/PortalSession.h"
#include "platform/linux/input/TextLender.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QLoggingCategory>
#include <QPointer>

namespace brenvale {

namespace {

Q_LOGGING_CATEGORY(portalInput, "brenvale.input.portal", QtWarningMsg)

constexpr int notifyPatience = 10'000;

/// The user's own clipboard comes back when the typing has ended.
constexpr std::chrono::milliseconds loanTime{800};

/// A session that is not ours any more, or a portal that hangs. Other errors are those of one event.
bool endsSession(QDBusError::ErrorType error) {
    return error == QDBusError::AccessDenied || error == QDBusError::NoReply ||
           error == QDBusError::UnknownObject || error == QDBusError::Disconnected;
}

} // namespace

PortalPlayer::PortalPlayer(QDBusConnection bus, PortalSession& session, PostedEvents& events,
                           TextLender* lender)
    : bus_(std::move(bus)), session_(session), events_(events), lender_(lender) {
    loan_.setSingleShot(true);
    connect(&loan_, &QTimer::timeout, this, [this] { giveBack(); });
}

void PortalPlayer::begin() {
    run_ = ++runs_;
    isBusy_ = false;
    put(openingSteps(session_.followsDialog()));
    advance();
}

void PortalPlayer::end() {
    run_ = 0;
    steps_.clear();
    while (events_.take()) {
    }
    if (!loan_.isActive()) { // else a program was told to paste, and has that time
        giveBack();
    }
}

/// Also what is not lent yet: who asked for it has gone.
void PortalPlayer::giveBack() {
    if (std::exchange(hasLoan_, false)) {
        lender_->giveBack();
    }
}

void PortalPlayer::advance() {
    while (run_ != 0 && !isBusy_) {
        if (auto pointer = steps_.empty() ? std::nullopt : events_.takeBeside()) {
            put(portalStepsFor(*pointer, {}));
        }
        if (steps_.empty() && !takeSteps()) {
            return;
        }
        if (!steps_.empty()) {
            const auto step = std::move(steps_.front());
            steps_.pop_front();
            std::visit([this](const auto& each) { perform(each); }, step);
        }
    }
}

/// Takes the next event. False if there is none.
bool PortalPlayer::takeSteps() {
    auto event = events_.take();
    if (!event) {
        return false;
    }
    if (auto* key = std::get_if<KeyEvent>(&*event); key != nullptr && key->text) {
        key->text = joinedText(*std::move(key->text));
    }
    put(portalStepsFor(*event, layouts_.keysyms()));
    return true;
}

/// A text with those that wait behind it: pasted one by one, they would take long.
QString PortalPlayer::joinedText(QString text) {
    constexpr qsizetype longest = 100'000;
    while (text.size() < longest) {
        const auto more = events_.takeTextBehind();
        if (!more) {
            break;
        }
        text += *more;
    }
    return text;
}

void PortalPlayer::put(PortalSteps steps) {
    steps_.insert(steps_.begin(), std::make_move_iterator(steps.begin()),
                  std::make_move_iterator(steps.end()));
}

void PortalPlayer::done(quint64 run) {
    if (run == run_) {
        isBusy_ = false;
        advance();
    }
}

void PortalPlayer::perform(const PortalNotify& notify) {
    isBusy_ = true;
    auto message =
        QDBusMessage::createMethodCall(portalService, portalPath, remoteDesktopInterface, notify.method);
    message.setArguments(QVariantList{QVariant::fromValue(session_.handle()), QVariantMap()}
                         << notify.values);
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message, notifyPatience), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, run = run_] {
        watcher->deleteLater();
        if (run != run_) {
            return;
        }
        if (watcher->isError()) {
            qCDebug(portalInput) << watcher->error();
            if (endsSession(watcher->error().type())) {
                session_.close();
            }
        }
        done(run);
    });
}

void PortalPlayer::perform(const PortalPause& pause) {
    isBusy_ = true;
    QTimer::singleShot(pause.time, this, [this, run = run_] { done(run); });
}

void PortalPlayer::perform(const PortalPaste& paste) {
    if (lender_ == nullptr) {
        put(typingSteps(paste.text));
        return;
    }
    isBusy_ = true;
    loan_.stop();
    hasLoan_ = true;
    lender_->lend(paste.text, [player = QPointer(this), text = paste.text, run = run_](bool isLent) {
        if (player) { // on main, where we are not
            QMetaObject::invokeMethod(player.data(), [player, text, run, isLent] {
                if (player && run == player->run_) {
                    player->pasteLent(text, isLent);
                }
            });
        }
    });
}

void PortalPlayer::pasteLent(const QString& text, bool isLent) {
    put(isLent ? pastingSteps() : typingSteps(text));
    if (isLent) {
        loan_.start(loanTime);
    }
    done(run_);
}

} // namespace brenvale
