#include "transfer/TransferText.h"

#include "records/CutToInteger.h"
#include "records/FileTransferRecord.h"

#include <QLocale>

#include <array>
#include <cmath>

namespace brenvale {

namespace {

struct Unit {
    QStringView name;
    int mostDecimals;
};

constexpr std::array units{Unit{u" KB", 0}, Unit{u" MB", 1}, Unit{u" GB", 2},
                           Unit{u" TB", 2}, Unit{u" PB", 2}, Unit{u" EB", 2}};

double rounded(double value, int decimals) {
    const double scale = std::pow(10, decimals);
    return std::round(value * scale) / scale;
}

} // namespace

QString byteCountText(qint64 bytes) {
    if (bytes == 0) {
        return QStringLiteral("Zero KB");
    }
    const QLocale locale;
    if (std::abs(bytes) < 1000) {
        return locale.toString(bytes) + (bytes == 1 ? QStringLiteral(" byte") : QStringLiteral(" bytes"));
    }
    auto value = static_cast<double>(bytes);
    std::size_t unit = 0;
    for (value /= 1000; unit + 1 < units.size() && std::abs(rounded(value, units[unit].mostDecimals)) >= 1000;
         ++unit) {
        value /= 1000;
    }
    const int decimals = units[unit].mostDecimals;
    return locale.toString(rounded(value, decimals), 'f', QLocale::FloatingPointShortest) +
           units[unit].name.toString();
}

QString progressText(double progress) {
    static constexpr auto outOfRange =
        "Double value cannot be converted to Int because the result would be out of range";
    static constexpr CutTexts texts{
        .notFinite = "Double value cannot be converted to Int because it is either infinite or NaN",
        .tooHigh = outOfRange,
        .tooLow = outOfRange};
    return QString::number(cutToInteger(progress * 100, texts)) + u'%';
}

QString completionText(const FileTransferRecord& record) {
    const auto separator = QStringLiteral(" • ");
    return (record.isOutgoing ? QStringLiteral("Sent") : QStringLiteral("Received")) + separator +
           byteCountText(record.fileSize) + separator +
           QLocale().toString(record.date.time(), QLocale::ShortFormat);
}

} // namespace brenvale
