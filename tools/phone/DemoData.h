#pragma once

#include "PhoneMessages.h"

#include <QList>
#include <QString>

/// The people, logs and notifications of the demo's invented phone. Pure functions, any thread.
namespace brenvale::phone {

struct Person {
    QString name;
    QString number;
};

const QList<Person>& demoPeople();

/// The logs as they stand at a moment, in milliseconds since 1970; the newest first, as a phone's log is.
QList<Sms> demoSmsLog(qint64 now);
QList<Call> demoCallLog(qint64 now);
QList<Sim> demoSims();

/// What a person writes back to a message.
QString demoAnswer(const Person& person);

/// A text for a small file.
QByteArray demoFile();

} // namespace brenvale::phone
