#include "ReportFuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    return ravelinth::fuzz::checkReport(
        data, size, &ravelinth::DiskInfoService::parseSystemProfilerReport, u"SPStorageDataType"_qs,
        u"size_in_bytes"_qs, u"free_space_in_bytes"_qs);
}
