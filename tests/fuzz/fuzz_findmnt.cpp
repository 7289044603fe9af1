#include "ReportFuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    return ravelinth::fuzz::checkReport(data, size, &ravelinth::DiskInfoService::parseFindmntReport,
                                        true);
}
