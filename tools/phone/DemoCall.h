#pragma once

#include "DemoData.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace brenvale::phone {

/// The one call of the demo's phone, from its first ring to its place in the log. Each function gives the
/// messages that the phone sends; what makes no sense at the moment gives none. It counts by secondPassed,
/// not by a clock.
class DemoCall {
public:
    static constexpr int ringingSeconds = 20;
    static constexpr int diallingSeconds = 3;
    static constexpr int talkingSeconds = 60;

    QList<QByteArray> ring(const Person& caller);
    QList<QByteArray> dial(const Person& called);
    QList<QByteArray> answer();
    QList<QByteArray> hangUp();
    QList<QByteArray> secondPassed();

    [[nodiscard]] bool isIdle() const { return state_ == State::Idle; }

    /// The call that ended last, once, without its date.
    std::optional<Call> takeFinished();

private:
    enum class State : quint8 { Idle, Ringing, Dialling, Talking };

    QList<QByteArray> talk();
    QList<QByteArray> end();
    [[nodiscard]] std::optional<QString> name() const;
    [[nodiscard]] QByteArray report(const QString& action, const QString& state,
                                    std::optional<qint64> duration = std::nullopt) const;

    State state_ = State::Idle;
    Person person_;
    bool isOutgoing_ = false;
    bool wasAnswered_ = false;
    int seconds_ = 0; ///< in the present state
    std::optional<Call> finished_;
};

} // namespace brenvale::phone
