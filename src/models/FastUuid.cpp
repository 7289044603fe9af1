#include "models/FastUuid.h"

#include <QRandomGenerator>

namespace ravelinth {

QUuid makeFastUuid() {
    thread_local QRandomGenerator64 generator(QRandomGenerator::system()->generate64() ^
                                              quint64(QRandomGenerator::system()->generate())
                                                  << 17);
    const quint64 high = generator.generate64();
    const quint64 low = generator.generate64();
    QUuid uuid(uint(high >> 32), ushort(high >> 16), ushort(high), uchar(low >> 56),
               uchar(low >> 48), uchar(low >> 40), uchar(low >> 32), uchar(low >> 24),
               uchar(low >> 16), uchar(low >> 8), uchar(low));
    // Version 4, variant RFC 4122.
    uuid.data3 = ushort((uuid.data3 & 0x0fff) | 0x4000);
    uuid.data4[0] = uchar((uuid.data4[0] & 0x3f) | 0x80);
    return uuid;
}

} // namespace ravelinth
