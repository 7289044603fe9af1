#include "ReportFuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    return ravelinth::fuzz::checkReport(data, size, &ravelinth::DiskInfoService::parseFindmntReport,
                                        u"filesystems"_qs, u"size"_qs, u"avail"_qs);
}
