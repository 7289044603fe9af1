#include "models/ScanState.h"

#include "models/ByteCountFormatter.h"

namespace ravelinth {

namespace {

// What a last-path-component operation gives for a path string: "" for "", "/" for "/",
// and trailing slashes ignored.
QString lastComponent(const QString &path) {
    if (path.isEmpty())
        return {};
    qsizetype end = path.size();
    while (end > 1 && path[end - 1] == u'/')
        --end;
    const QStringView trimmed = QStringView(path).first(end);
    if (trimmed == u"/")
        return trimmed.toString();
    return trimmed.sliced(trimmed.lastIndexOf(u'/') + 1).toString();
}

template <class... Ts> struct Overloaded : Ts... { using Ts::operator()...; };
// Spelled out for compilers without aggregate deduction (clang before 17).
template <class... Ts> Overloaded(Ts...) -> Overloaded<Ts...>;

} // namespace

QString ScanState::statusMessage() const {
    return std::visit(
        Overloaded{
            [](const scanstate::Idle &) { return u"Ready to scan"_qs; },
            [](const scanstate::Scanning &s) {
                return u"Scanning: "_qs + lastComponent(s.currentFile) + u"\nFiles: "_qs +
                       formatGroupedInteger(s.filesScanned) + u" \u2022 "_qs +
                       formatByteCount(s.bytesScanned);
            },
            [](const scanstate::Completed &s) {
                return u"\u2705 Found "_qs + QString::number(s.filesFound) + u" files ("_qs +
                       formatByteCount(s.totalSize) + u") in "_qs + formatOneDecimal(s.duration) +
                       u's';
            },
            [](const scanstate::Error &s) { return u"\u274C Error: "_qs + s.message; },
            [](const scanstate::Cancelled &) { return u"\u23F9\uFE0F Scan cancelled"_qs; },
        },
        m_value);
}

} // namespace ravelinth
