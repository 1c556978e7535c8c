#include "DemoCall.h"

#include <utility>

namespace brenvale::phone {
namespace {

QString stateChanged() {
    return QStringLiteral("call_state_changed");
}
QString offHook() {
    return QStringLiteral("OFFHOOK");
}

} // namespace

QList<QByteArray> DemoCall::ring(const Person& caller) {
    if (state_ != State::Idle) {
        return {};
    }
    state_ = State::Ringing;
    person_ = caller;
    isOutgoing_ = false;
    wasAnswered_ = false;
    seconds_ = 0;
    return {report(QStringLiteral("incoming_call"), QStringLiteral("RINGING"))};
}

// A phone that dials is off the hook from the start; its clock runs once the other side has answered.
QList<QByteArray> DemoCall::dial(const Person& called) {
    if (state_ != State::Idle) {
        return {};
    }
    state_ = State::Dialling;
    person_ = called;
    isOutgoing_ = true;
    wasAnswered_ = false;
    seconds_ = 0;
    return {report(stateChanged(), offHook())};
}

QList<QByteArray> DemoCall::answer() {
    return state_ == State::Ringing ? talk() : QList<QByteArray>{};
}

QList<QByteArray> DemoCall::hangUp() {
    return state_ == State::Idle ? QList<QByteArray>{} : end();
}

QList<QByteArray> DemoCall::secondPassed() {
    ++seconds_;
    switch (state_) {
    case State::Idle:
        return {};
    case State::Ringing:
        return seconds_ >= ringingSeconds ? end() : QList<QByteArray>{};
    case State::Dialling:
        return seconds_ >= diallingSeconds ? talk() : QList<QByteArray>{};
    case State::Talking:
        break;
    }
    return seconds_ >= talkingSeconds ? end()
                                      : QList{report(QStringLiteral("call_update"), offHook(), seconds_)};
}

std::optional<Call> DemoCall::takeFinished() {
    return std::exchange(finished_, std::nullopt);
}

QList<QByteArray> DemoCall::talk() {
    state_ = State::Talking;
    wasAnswered_ = true;
    seconds_ = 0;
    return {report(stateChanged(), offHook(), 0)};
}

QList<QByteArray> DemoCall::end() {
    const Direction incoming = wasAnswered_ ? Direction::Incoming : Direction::Missed;
    finished_ = Call{.number = person_.number,
                     .name = name(),
                     .duration = wasAnswered_ ? seconds_ : 0,
                     .direction = isOutgoing_ ? Direction::Outgoing : incoming};
    state_ = State::Idle;
    return {report(QStringLiteral("call_ended"), QStringLiteral("IDLE"))};
}

std::optional<QString> DemoCall::name() const {
    return person_.name.isEmpty() ? std::nullopt : std::optional(person_.name);
}

QByteArray DemoCall::report(const QString& action, const QString& state,
                            std::optional<qint64> duration) const {
    return callMessage(
        {.action = action, .state = state, .number = person_.number, .name = name(), .duration = duration});
}

} // namespace brenvale::phone
