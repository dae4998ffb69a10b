/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief One block, written where it stands in the file.  Its room is known to be there.
 */
#ifndef OXA_CAPTURE_BLOCK_H
#define OXA_CAPTURE_BLOCK_H

#include <string.h>

#include "capture/format.h"

namespace oxa::capture {

inline constexpr uint32_t Filled(uint32_t dwSize) {
    return (dwSize + 3) & ~3u;
}

class Block {
public:
    Block(uint8_t *pucAt, BlockKind eKind, uint8_t ucThread, uint16_t wId)
        : m_pucAt(pucAt), m_pucNext(pucAt + kBlockHeaderSize),
          m_dwKind(eKind | static_cast<uint32_t>(ucThread) << 8 | static_cast<uint32_t>(wId) << 16) {}
    void Add(const void *pvBytes, uint32_t dwSize) {
        memcpy(m_pucNext, pvBytes, dwSize);
        m_pucNext += dwSize;
    }
    void AddHead(uint32_t dwKind, uint32_t dwLength) {
        *m_pucNext++ = static_cast<uint8_t>(dwKind);
        for (; dwLength >= 0x80; dwLength >>= 7)
            *m_pucNext++ = static_cast<uint8_t>(dwLength | 0x80);
        *m_pucNext++ = static_cast<uint8_t>(dwLength);
    }
    // Without leading zero bytes.  Eight are written: the room behind an item is part of what a block asks for.
    void AddUnsigned(uint32_t dwKind, uint64_t qwValue) {
        const uint32_t dwLength = static_cast<uint32_t>(71 - __builtin_clzll(qwValue | 1)) / 8;
        m_pucNext[0] = static_cast<uint8_t>(dwKind);
        m_pucNext[1] = static_cast<uint8_t>(dwLength);
        memcpy(m_pucNext + 2, &qwValue, sizeof(qwValue));
        m_pucNext += 2 + dwLength;
    }
    void AddSigned(uint32_t dwKind, int64_t sdqValue, uint32_t dwSize) {
        m_pucNext[0] = static_cast<uint8_t>(dwKind);
        m_pucNext[1] = static_cast<uint8_t>(dwSize);
        memcpy(m_pucNext + 2, &sdqValue, sizeof(sdqValue));
        m_pucNext += 2 + dwSize;
    }
    void AddText(const char *pcText) {
        const uint32_t dwLength = static_cast<uint32_t>(strlen(pcText));
        AddHead(kText, dwLength);
        Add(pcText, dwLength);
    }
    const uint8_t *Payload() const {
        return m_pucAt + kBlockHeaderSize;
    }
    uint32_t PayloadSize() const {
        return static_cast<uint32_t>(m_pucNext - Payload());
    }
    // Its size.  What it holds was told before: a word in its place.
    uint32_t EndAgain() {
        const uint32_t dwAgain =
            AgainWord(static_cast<uint8_t>(m_dwKind >> 8), static_cast<uint16_t>(m_dwKind >> 16));
        memset(m_pucAt + 4, 0, static_cast<size_t>(m_pucNext - m_pucAt - 4) + kNumber);
        __atomic_store_n(reinterpret_cast<uint32_t *>(m_pucAt), dwAgain, __ATOMIC_RELEASE);
        return sizeof(dwAgain);
    }
    // Its size.  The kind comes last: what a dying process leaves half written reads as nothing.  So must what stands behind
    // the block, where a number may have left some of its bytes.
    uint32_t End() {
        const uint32_t dwSize = PayloadSize();
        memset(m_pucNext, 0, kNumber);
        const uint32_t adwHead[] = {dwSize, m_dwKind};
        uint32_t dwSum = Checksum(kChecksumStart, adwHead, sizeof(adwHead));
        dwSum = Checksum(dwSum, m_pucAt + kBlockHeaderSize, Filled(dwSize));
        memcpy(m_pucAt, &dwSize, 4);
        memcpy(m_pucAt + 8, &dwSum, 4);
        __atomic_store_n(reinterpret_cast<uint32_t *>(m_pucAt + 4), m_dwKind, __ATOMIC_RELEASE);
        return kBlockHeaderSize + Filled(dwSize);
    }

private:
    static constexpr size_t kNumber = sizeof(uint64_t);

    uint8_t *m_pucAt, *m_pucNext;
    uint32_t m_dwKind;
};

} // namespace oxa::capture
#endif
