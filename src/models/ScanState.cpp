#include "models/ScanState.h"

#include "models/ByteCountFormatter.h"
#include "models/ProgressText.h"

namespace ravelinth {

namespace {

template <class... Ts> struct Overloaded : Ts... { using Ts::operator()...; };
// Spelled out for compilers without aggregate deduction (clang before 17).
template <class... Ts> Overloaded(Ts...) -> Overloaded<Ts...>;

} // namespace

QString ScanState::statusMessage() const {
    return std::visit(
        Overloaded{
            [](const scanstate::Idle &) { return u"Ready to scan"_qs; },
            [](const scanstate::Scanning &s) {
                return u"Scanning: "_qs + lastPathComponentText(s.currentFile) + u"\nFiles: "_qs +
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

QString ScanState::path() const {
    const auto *state = as<scanstate::Scanning>();
    return state ? state->path : QString();
}
double ScanState::filesScanned() const {
    const auto *state = as<scanstate::Scanning>();
    return state ? double(state->filesScanned) : 0.0;
}
double ScanState::bytesScanned() const {
    const auto *state = as<scanstate::Scanning>();
    return state ? double(state->bytesScanned) : 0.0;
}
QString ScanState::currentFile() const {
    const auto *state = as<scanstate::Scanning>();
    return state ? state->currentFile : QString();
}
double ScanState::filesFound() const {
    const auto *state = as<scanstate::Completed>();
    return state ? double(state->filesFound) : 0.0;
}
double ScanState::totalSize() const {
    const auto *state = as<scanstate::Completed>();
    return state ? double(state->totalSize) : 0.0;
}
double ScanState::duration() const {
    const auto *state = as<scanstate::Completed>();
    return state ? state->duration : 0.0;
}
QString ScanState::message() const {
    const auto *state = as<scanstate::Error>();
    return state ? state->message : QString();
}

} // namespace ravelinth
