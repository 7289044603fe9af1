#include "models/DisplayText.h"

#include "models/JsonText.h"

#include <QStringDecoder>

namespace ravelinth {

QString displayText(QByteArrayView bytes) {
    if (!bytes.startsWith("\xEF\xBB\xBF"))
        return QString::fromUtf8(bytes);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    return decoder.decode(bytes);
}

QByteArray displayUtf8(const QByteArray &bytes) {
    if (isValidUtf8(bytes))
        return bytes;
    return displayText(bytes).toUtf8();
}

} // namespace ravelinth
