#include "transfer/FileChunkText.h"

#include "link/Json.h"
#include "transfer/Base64.h"

namespace brenvale {

QByteArray fileTransferStartText(const QString& fileName, qint64 fileSize) {
    return R"({"action":"file_transfer_start","fileName":")" + fileName.toUtf8() + R"(","fileSize":)" +
           QByteArray::number(fileSize) + '}';
}

QByteArray fileChunkText(const QString& fileName, QByteArrayView bytes, bool isLast) {
    const auto members = writeJson({{QStringLiteral("action"), QStringLiteral("file_chunk")},
                                    {QStringLiteral("fileName"), fileName},
                                    {QStringLiteral("isLast"), isLast}});
    constexpr QByteArrayView dataMember = R"(,"fileData":")";
    constexpr QByteArrayView end = "\"}";
    QByteArray text;
    text.reserve(members.size() + dataMember.size() + end.size() +
                 static_cast<qsizetype>(base64EncodedSize(static_cast<std::size_t>(bytes.size()))));
    text += QByteArrayView(members).chopped(
        1); // base64 needs no escaping, so it may stand behind the written members
    text += dataMember;
    appendBase64(bytes, text);
    text += end;
    return text;
}

} // namespace brenvale
