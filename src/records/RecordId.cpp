#include "records/RecordId.h"

#include <QRandomGenerator>

#include <array>

namespace brenvale {

QUuid makeRecordId() {
    std::array<quint32, 4> random{};
    QRandomGenerator::global()->fillRange(random.data(), static_cast<qsizetype>(random.size()));
    const auto byte = [](quint32 word, int index) {
        return static_cast<uchar>(word >> (8 * index));
    };
    const auto version4 = static_cast<ushort>((random[1] & 0x0fffU) | 0x4000U);
    const auto variant = static_cast<uchar>((byte(random[2], 0) & 0x3fU) | 0x80U);
    return {random[0],          static_cast<ushort>(random[1] >> 16),
            version4,           variant,
            byte(random[2], 1), byte(random[2], 2),
            byte(random[2], 3), byte(random[3], 0),
            byte(random[3], 1), byte(random[3], 2),
            byte(random[3], 3)};
}

QString recordIdText(const QUuid& id) {
    return id.toString(QUuid::WithoutBraces).toUpper();
}

} // namespace brenvale
