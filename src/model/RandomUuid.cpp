#include "model/RandomUuid.h"

#include <QRandomGenerator>
#include <array>

namespace lullwick {

QUuid newRandomUuid()
{
    std::array<quint32, 4> words;
    QRandomGenerator::global()->fillRange(words.data(), words.size());
    QUuid uuid;
    uuid.data1 = words[0];
    uuid.data2 = quint16(words[1]);
    uuid.data3 = quint16((words[1] >> 16 & 0x0fff) | 0x4000); // version 4
    uuid.data4[0] = uchar((words[2] & 0x3f) | 0x80);          // RFC 4122 variant
    uuid.data4[1] = uchar(words[2] >> 8);
    uuid.data4[2] = uchar(words[2] >> 16);
    uuid.data4[3] = uchar(words[2] >> 24);
    for (int i = 0; i < 4; ++i)
        uuid.data4[4 + i] = uchar(words[3] >> (8 * i));
    return uuid;
}

} // namespace lullwick
