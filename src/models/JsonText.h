#pragma once

#include "models/Utf8.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace ravelinth {

// UTF-8 text as a JSON string literal, quotes included, appended to `out`. Only what JSON
// requires is escaped; every other byte is copied, so non-ASCII text stays readable.
void appendJsonString(QByteArray &out, QByteArrayView utf8);
QByteArray jsonString(const QString &text);

// Bytes outside printable ASCII, and "%", as %XX: a lossless text form of a path that is not UTF-8.
QByteArray percentEncodeRawPath(QByteArrayView path);

} // namespace ravelinth
