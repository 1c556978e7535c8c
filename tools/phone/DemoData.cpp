#include "DemoData.h"

#include <algorithm>
#include <array>

namespace brenvale::phone {
namespace {

/// An age in milliseconds.
constexpr qint64 ago(qint64 days, qint64 hours, qint64 minutes) {
    return ((((days * 24) + hours) * 60) + minutes) * 60'000;
}

// People of the demo, by their places in demoPeople.
enum Who : quint8 { Mara, Jonas, Amelie, Yusuf, Noa, Haruka, Lucia, Grandpa };

struct SmsRow {
    Who who;
    qint64 age;
    Direction direction;
    const char* body;
};

constexpr SmsRow from(Who who, qint64 age, const char* body) {
    return {.who = who, .age = age, .direction = Direction::Incoming, .body = body};
}

constexpr SmsRow to(Who who, qint64 age, const char* body) {
    return {.who = who, .age = age, .direction = Direction::Outgoing, .body = body};
}

constexpr std::array smsRows{
    from(Mara, ago(0, 0, 6), "Are you still in the office? I could pick you up 🚗"),
    to(Mara, ago(0, 0, 9), "Nearly done, twenty minutes"),
    from(Mara, ago(0, 0, 12), "Dinner at the little Italian place tonight? 🍝"),
    to(Mara, ago(2, 0, 0), "The tickets are in your mail"),
    from(Mara, ago(2, 1, 0), "Did you get the tickets for Saturday?"),
    from(Jonas, ago(0, 0, 50), "Servus! Training fällt heute aus, die Halle wird gestrichen."),
    from(Jonas, ago(0, 0, 55), "Kannst du die Bälle trotzdem mitbringen? Größe 5 🏀"),
    to(Jonas, ago(1, 2, 0), "Alles klar, bis Dienstag"),
    from(Jonas, ago(1, 3, 0), "Nächste Woche spielen wir in Überlingen"),
    from(Amelie, ago(0, 3, 0), "J’ai trouvé l’appartement idéal, à deux pas du canal !"),
    from(Amelie, ago(0, 3, 1), "Je t’envoie les photos ce soir 📷"),
    to(Amelie, ago(0, 4, 0), "Génial, j’ai hâte de voir ça"),
    from(Amelie, ago(9, 0, 0), "Bonne année ! 🎉🎊"),
    from(Yusuf, ago(0, 5, 0), "صباح الخير، هل الاجتماع ما زال في الساعة العاشرة؟"),
    to(Yusuf, ago(0, 4, 59), "نعم، في القاعة 3 كالعادة"),
    from(Yusuf, ago(0, 4, 58), "شكرًا 👍"),
    from(Yusuf, ago(3, 0, 0), "The slides are on the shared drive: https://files.example/q3?view=all&page=2"),
    from(Noa, ago(0, 8, 0), "שלום! מתי נוח לך לדבר על הטיול?"),
    to(Noa, ago(0, 7, 55), "מחר בערב, אחרי שמונה"),
    from(Noa, ago(4, 0, 0), "הגענו הביתה בשלום ❤️"),
    from(Haruka, ago(1, 6, 0), "お土産、無事に届きました。ありがとう！"),
    to(Haruka, ago(1, 5, 0), "よかった 😊"),
    from(Haruka, ago(1, 4, 0), "来月の出張、東京駅で待ち合わせしましょう"),
    from(Lucia, ago(1, 9, 0), "¿Puedes revisar el presupuesto? Faltan dos líneas:\n- transporte\n- seguro"),
    to(Lucia, ago(1, 8, 0), "Hecho, te lo mando mañana"),
    from(Lucia, ago(6, 0, 0), "¡Feliz cumpleaños! 🎂🎈👩‍👩‍👧‍👦"),
    from(Grandpa, ago(2, 5, 0), "HOW DO I TURN OFF THE BIG LETTERS"),
    to(Grandpa, ago(2, 4, 0), "The arrow key at the left, press it once 🙂"),
    from(Grandpa, ago(2, 3, 0), "thank you. it works. love, grandpa"),
    from(Grandpa, ago(12, 0, 0), "The roses are in bloom 🌹🌹🌹"),
};

struct CallRow {
    Who who;
    qint64 age;
    qint64 duration;
    Direction direction;
};

constexpr CallRow answered(Who who, qint64 age, qint64 duration) {
    return {.who = who, .age = age, .duration = duration, .direction = Direction::Incoming};
}

constexpr CallRow dialled(Who who, qint64 age, qint64 duration) {
    return {.who = who, .age = age, .duration = duration, .direction = Direction::Outgoing};
}

constexpr CallRow missed(Who who, qint64 age) {
    return {.who = who, .age = age, .duration = 0, .direction = Direction::Missed};
}

constexpr std::array callRows{
    answered(Mara, ago(0, 2, 0), 312),  missed(Jonas, ago(0, 4, 0)),
    dialled(Yusuf, ago(0, 6, 0), 1260), answered(Grandpa, ago(1, 0, 0), 1845),
    missed(Grandpa, ago(1, 1, 0)),      dialled(Amelie, ago(2, 0, 0), 95),
    answered(Lucia, ago(3, 0, 0), 431), dialled(Haruka, ago(5, 0, 0), 2710),
    missed(Noa, ago(6, 0, 0)),          dialled(Mara, ago(7, 0, 0), 48),
};

} // namespace

const QList<Person>& demoPeople() {
    static const QList<Person> people{
        {.name = QStringLiteral("Mara Lindqvist"), .number = QStringLiteral("+46 70 174 06 05")},
        {.name = QStringLiteral("Jonas Größl"), .number = QStringLiteral("+49 171 5550102")},
        {.name = QStringLiteral("Amélie Dubois"), .number = QStringLiteral("+33 6 99 55 01 03")},
        {.name = QStringLiteral("يوسف حداد"), .number = QStringLiteral("+971 50 555 0104")},
        {.name = QStringLiteral("נועה לוי"), .number = QStringLiteral("+972 50-555-0105")},
        {.name = QStringLiteral("佐藤 春香"), .number = QStringLiteral("+81 90-5555-0106")},
        {.name = QStringLiteral("Lucía Fernández"), .number = QStringLiteral("+34 655 550 107")},
        {.name = QStringLiteral("Grandpa"), .number = QStringLiteral("(555) 010-0108")},
    };
    return people;
}

QList<Sms> demoSmsLog(qint64 now) {
    QList<Sms> log;
    for (const SmsRow& row : smsRows) {
        const Person& person = demoPeople().at(row.who);
        log.append({.address = person.number,
                    .name = person.name,
                    .body = QString::fromUtf8(row.body),
                    .date = now - row.age,
                    .direction = row.direction});
    }
    // Senders without a number and without a contact.
    log.append({.address = QStringLiteral("MyBank"),
                .body = QStringLiteral("Your code is 482 913. Do not share it with anyone."),
                .date = now - ago(0, 1, 35)});
    log.append({.address = QStringLiteral("+44 7700 900123"),
                .body = QStringLiteral("Your parcel is on its way: https://parcels.example/t/77123"),
                .date = now - ago(0, 7, 0)});
    std::ranges::sort(log, std::greater{}, &Sms::date);
    return log;
}

QList<Call> demoCallLog(qint64 now) {
    QList<Call> log;
    for (const CallRow& row : callRows) {
        const Person& person = demoPeople().at(row.who);
        log.append({.number = person.number,
                    .name = person.name,
                    .date = now - row.age,
                    .duration = row.duration,
                    .direction = row.direction});
    }
    log.append({.number = QStringLiteral("+44 7700 900456"),
                .date = now - ago(0, 9, 0),
                .direction = Direction::Missed});
    std::ranges::sort(log, std::greater{}, &Call::date);
    return log;
}

QList<Sim> demoSims() {
    return {{.slot = 0, .carrier = QStringLiteral("Nordic Mobile")},
            {.slot = 1, .carrier = QStringLiteral("TravelSIM")}};
}

QString demoAnswer(const Person& person) {
    return person.name == QLatin1String("Grandpa")
               ? QStringLiteral("GOOD TO HEAR FROM YOU. THE BIG LETTERS ARE BACK")
               : QStringLiteral("Got it, thanks! 👍");
}

QByteArray demoFile() {
    return QByteArrayLiteral("Holiday plan\n============\n\n"
                             "Saturday   train at 8:12, seats 41 and 42\n"
                             "Sunday     boat to the island, bring sun cream\n"
                             "Monday     Amélie’s place, 12 rue du Canal\n"
                             "Tuesday    home with the night train\n");
}

} // namespace brenvale::phone
