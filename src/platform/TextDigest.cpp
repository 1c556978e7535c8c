#include "platform/TextDigest.h"

#include <QCryptographicHash>

#include <algorithm>

namespace brenvale {

TextDigest textDigest(const QStringList& parts) {
    QCryptographicHash hash(QCryptographicHash::Blake2b_256);
    const auto add = [&hash](QStringView text) {
        hash.addData(QByteArrayView(reinterpret_cast<const char*>(text.utf16()), // NOLINT: its bytes
                                    text.size() * qsizetype{sizeof(char16_t)}));
    };
    for (qsizetype place = 0; place < parts.size(); ++place) {
        if (place > 0) {
            add(u":");
        }
        add(parts.at(place));
    }
    const auto result = hash.result();
    TextDigest digest{};
    std::ranges::copy(result, digest.begin());
    return digest;
}

} // namespace brenvale
