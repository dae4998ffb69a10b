/* SPDX-License-Identifier: Apache-2.0 */
#include "capture/through.h"

#include <dlfcn.h>
#include <errno.h>
#include <pthread.h>
#include <string.h>

#include "capture/block.h"
#include "capture/file.h"
#include "capture/start.h"

#if defined(__arm__)
// The newest libc has a second one; the first one is in all of them.
__asm__(".symver dlsym, dlsym@GLIBC_2.4");
#endif

namespace oxa::capture {

__thread Thread g_tThread;
void *g_apvReal[kNameCount];

namespace {

// Long blocks that were told last: the library reads the same file again for every record.
struct Seen {
    uint32_t dwSize, dwNumber;
    uint8_t aucBytes[kMostData];
};
constexpr unsigned kSeenCount = 4;
constexpr uint32_t kLeastSeen = 256; // what is shorter is not worth its place

// The last call of each function that was told in full.
struct Last {
    const uint8_t *pucPayload;
    uint32_t dwSize;
};

enum class State : uint8_t { kFresh, kOn, kOff };

pthread_mutex_t g_tLock = PTHREAD_MUTEX_INITIALIZER;
uint8_t g_ucState; // State
uint8_t g_ucThreads;
bool g_bLastEntered; // an entry of a thread with the last number
uint32_t g_dwDataCount;
unsigned g_dwNextSeen;
Seen g_atSeen[kSeenCount];
uint8_t g_aucNamed[(kNameCount + 7) / 8];
Last g_atLast[kNameCount];
uint8_t g_aucMissing[(kNameCount + 7) / 8];

State StateNow() {
    return static_cast<State>(__atomic_load_n(&g_ucState, __ATOMIC_ACQUIRE));
}

void SetState(State eState) {
    __atomic_store_n(&g_ucState, static_cast<uint8_t>(eState), __ATOMIC_RELEASE);
}

bool MarkOnce(uint8_t *pucBits, uint32_t dwBit) {
    const uint8_t ucMask = static_cast<uint8_t>(1u << (dwBit % 8));
    if ((pucBits[dwBit / 8] & ucMask) != 0)
        return false;
    pucBits[dwBit / 8] |= ucMask;
    return true;
}

void Stop() {
    const char *pcWhy = WhyFull() == Full::kLimit    ? "its limit is reached (OXA_CAPTURE_LIMIT)"
                        : WhyFull() == Full::kClosed ? "the program closed its file"
                                                     : "the disk is full";
    Block tBlock(LastRoom(), kStopped, 0, 0);
    tBlock.AddText(pcWhy);
    Take(tBlock.End());
    CloseFile();
    SetState(State::kOff);
}

// Room for a block whose payload has at most that many bytes.
uint8_t *RoomFor(uint32_t dwMost) {
    uint8_t *const pucAt = Room(kBlockHeaderSize + Filled(dwMost));
    if (pucAt == nullptr)
        Stop();
    return pucAt;
}

bool TellName(uint16_t wId) {
    if (!MarkOnce(g_aucNamed, wId))
        return true;
    uint8_t *const pucAt = RoomFor(static_cast<uint32_t>(strlen(NameOf(wId))) + 8);
    if (pucAt == nullptr)
        return false;
    Block tBlock(pucAt, kName, g_tThread.ucNumber, wId);
    tBlock.AddText(NameOf(wId));
    Take(tBlock.End());
    return true;
}

// ---- long blocks ----------------------------------------------------------------------------------------------------

uint32_t NumberOfSeen(const uint8_t *pucBytes, uint32_t dwSize) {
    for (const Seen &tSeen : g_atSeen)
        if (tSeen.dwSize == dwSize && memcmp(tSeen.aucBytes, pucBytes, dwSize) == 0)
            return tSeen.dwNumber;
    return 0;
}

void Remember(const uint8_t *pucBytes, uint32_t dwSize) {
    if (dwSize < kLeastSeen)
        return;
    Seen &tSeen = g_atSeen[g_dwNextSeen++ % kSeenCount];
    tSeen.dwSize = dwSize;
    tSeen.dwNumber = g_dwDataCount;
    memcpy(tSeen.aucBytes, pucBytes, dwSize);
}

// The number of the block that holds these bytes, 0 when there is no room for it any more.
uint32_t DataNumber(const uint8_t *pucBytes, uint32_t dwSize) {
    if (const uint32_t dwKnown = NumberOfSeen(pucBytes, dwSize))
        return dwKnown;
    uint8_t *const pucAt = RoomFor(dwSize);
    if (pucAt == nullptr)
        return 0;
    Block tBlock(pucAt, kData, g_tThread.ucNumber, 0);
    tBlock.Add(pucBytes, dwSize);
    Take(tBlock.End());
    ++g_dwDataCount;
    Remember(pucBytes, dwSize);
    return g_dwDataCount;
}

// ---- a call ---------------------------------------------------------------------------------------------------------

constexpr unsigned kMostChunks = 128;         // 2 MB: more than a pass can make
constexpr uint32_t kMostItem = 32;            // of a number twice, or around what is longer
constexpr uint32_t kMostRest = 2 * kMostItem; // that it returned, the result, errno, bounded calls
constexpr int kErrnoUntold = -1;

uint32_t Chunks(uint32_t dwSize) {
    return (dwSize + kMostData - 1) / kMostData;
}

uint64_t NumberOf(const Part &tPart) {
    if (tPart.size == sizeof(uint32_t))
        return *static_cast<const uint32_t *>(tPart.data);
    if (tPart.size == sizeof(uint8_t))
        return *static_cast<const uint8_t *>(tPart.data);
    uint64_t qwValue = 0;
    memcpy(&qwValue, tPart.data, tPart.size);
    return qwValue;
}

int64_t SignedOf(const Part &tPart) {
    const uint64_t qwValue = NumberOf(tPart);
    return tPart.shape == Shape::kSigned && tPart.size == 4 ? static_cast<int32_t>(qwValue)
                                                            : static_cast<int64_t>(qwValue);
}

// As far as the result says that it came out.
uint32_t OutSize(const Part &tPart, const Part *ptResult) {
    if ((tPart.way & (kOutUpToResult | kOutOnSuccess)) == 0)
        return tPart.shape == Shape::kText && tPart.data != nullptr
                   ? static_cast<uint32_t>(strnlen(static_cast<const char *>(tPart.data), tPart.size))
                   : tPart.size;
    const int64_t sdqResult = ptResult != nullptr ? SignedOf(*ptResult) : 0;
    if ((tPart.way & kOutOnSuccess) != 0)
        return sdqResult != 0 ? 0 : tPart.size;
    const uint64_t qwSize = sdqResult > 0 ? static_cast<uint64_t>(sdqResult) * tPart.unit : 0;
    return qwSize < tPart.size ? static_cast<uint32_t>(qwSize) : tPart.size;
}

// One call on its way into a block.
class Telling {
public:
    Telling(BlockKind eKind, const Part *ptParts, unsigned dwCount, const Part *ptResult,
            const uint8_t *pucBefore)
        : m_eKind(eKind), m_ptParts(ptParts), m_dwCount(dwCount), m_ptResult(ptResult),
          m_pucBefore(pucBefore) {}

    void Tell(uint16_t wId, int nErrno) {
        uint32_t dwMost = kMostRest;
        for (unsigned i = 0; i < m_dwCount; ++i)
            dwMost +=
                kMostItem + 2 * (m_ptParts[i].size < kLeastData ? m_ptParts[i].size : Longer(m_ptParts[i]));
        uint8_t *const pucAt = TellName(wId) && TellData() ? RoomFor(dwMost) : nullptr;
        if (pucAt == nullptr)
            return;
        Block tBlock(pucAt, m_eKind, g_tThread.ucNumber, wId);
        const uint32_t *pdwNumbers = m_adwNumbers;
        for (unsigned i = 0; m_eKind != kEntryEnd && i < m_dwCount; ++i)
            AddIn(tBlock, m_ptParts[i], pdwNumbers);
        if (m_eKind == kCall)
            tBlock.AddHead(kReturned, 0);
        for (unsigned i = 0; m_eKind != kEntryBegin && i < m_dwCount; ++i)
            if ((m_ptParts[i].way & kOut) != 0)
                Add(tBlock, m_ptParts[i], OutSize(m_ptParts[i], m_ptResult), m_ptParts[i].data, pdwNumbers);
        AddRest(tBlock, nErrno);
        Take(m_eKind == kCall && IsAgain(tBlock, g_atLast[wId]) ? tBlock.EndAgain() : tBlock.End());
    }

private:
    // What a parameter takes in the block, and whether it needs data blocks before it.
    uint32_t Longer(const Part &tPart) {
        if (tPart.shape != Shape::kBytes)
            return tPart.size;
        m_bData = true;
        return 8 + 4 * Chunks(tPart.size);
    }
    static bool IsLong(const Part &tPart, uint32_t dwSize) {
        return dwSize >= kLeastData && tPart.shape == Shape::kBytes && tPart.data != nullptr;
    }
    // False: no room.  In the order in which the block names them.
    bool TellData() {
        unsigned dwNumbers = 0;
        for (unsigned i = 0; m_bData && m_eKind != kEntryEnd && i < m_dwCount; ++i)
            if ((m_ptParts[i].way & kIn) != 0 && !TellLong(m_ptParts[i], m_ptParts[i].size, dwNumbers))
                return false;
        for (unsigned i = 0; m_bData && m_eKind != kEntryBegin && i < m_dwCount; ++i)
            if ((m_ptParts[i].way & kOut) != 0 &&
                !TellLong(m_ptParts[i], OutSize(m_ptParts[i], m_ptResult), dwNumbers))
                return false;
        return true;
    }
    bool TellLong(const Part &tPart, uint32_t dwSize, unsigned &dwNumbers) {
        const uint8_t *const pucBytes = static_cast<const uint8_t *>(tPart.data);
        for (uint32_t dwAt = 0; IsLong(tPart, dwSize) && dwAt < dwSize; dwAt += kMostData) {
            if (dwNumbers == kMostChunks)
                return false;
            const uint32_t dwRest = dwSize - dwAt;
            m_adwNumbers[dwNumbers] = DataNumber(pucBytes + dwAt, dwRest < kMostData ? dwRest : kMostData);
            if (m_adwNumbers[dwNumbers++] == 0)
                return false;
        }
        return true;
    }
    void AddIn(Block &tBlock, const Part &tPart, const uint32_t *&pdwNumbers) {
        if ((tPart.way & kIn) == 0 && tPart.data != nullptr)
            return tBlock.AddUnsigned(kRoom, tPart.size);
        const bool bChanged = tPart.way == (kIn | kOut) && m_pucBefore != nullptr && tPart.data != nullptr;
        Add(tBlock, tPart, tPart.size, bChanged ? m_pucBefore : tPart.data, pdwNumbers);
    }
    static void Add(Block &tBlock, const Part &tPart, uint32_t dwSize, const void *pvBytes,
                    const uint32_t *&pdwNumbers) {
        if (tPart.data == nullptr)
            return tBlock.AddHead(kNull, 0);
        if (tPart.shape == Shape::kUnsigned)
            return tBlock.AddUnsigned(kUnsigned, NumberOf(tPart));
        if (tPart.shape == Shape::kSigned)
            return tBlock.AddSigned(kSigned, SignedOf(tPart), tPart.size);
        if (IsLong(tPart, dwSize)) {
            tBlock.AddHead(kDataNumbers, 4 * Chunks(dwSize));
            tBlock.Add(pdwNumbers, 4 * Chunks(dwSize));
            pdwNumbers += Chunks(dwSize);
            return;
        }
        tBlock.AddHead(tPart.shape == Shape::kText ? kText : kBytes, dwSize);
        tBlock.Add(pvBytes, dwSize);
    }
    void AddRest(Block &tBlock, int nErrno) const {
        if (m_ptResult != nullptr && m_ptResult->shape == Shape::kUnsigned)
            tBlock.AddUnsigned(kResult + kUnsigned, NumberOf(*m_ptResult));
        else if (m_ptResult != nullptr)
            tBlock.AddSigned(kResult + kSigned, SignedOf(*m_ptResult), m_ptResult->size);
        if (nErrno != kErrnoUntold)
            tBlock.AddSigned(kErrno, nErrno, sizeof(nErrno));
        if (g_tThread.dwPassedOver != 0)
            tBlock.AddUnsigned(kUncounted, g_tThread.dwPassedOver);
        g_tThread.dwPassedOver = 0;
    }
    // Most calls are the same for every record: the store is locked, opened, read and closed.
    static bool IsAgain(const Block &tBlock, Last &tLast) {
        if (tLast.dwSize == tBlock.PayloadSize() &&
            memcmp(tLast.pucPayload, tBlock.Payload(), tLast.dwSize) == 0)
            return true;
        tLast = {tBlock.Payload(), tBlock.PayloadSize()};
        return false;
    }

    BlockKind m_eKind;
    const Part *m_ptParts;
    unsigned m_dwCount;
    const Part *m_ptResult;
    const uint8_t *m_pucBefore;
    bool m_bData = false;
    uint32_t m_adwNumbers[kMostChunks]; // of data blocks, in the order in which they are named
};

// There are 255 numbers of threads.  Of those that share the last one only one has an entry at a time, or nobody could tell
// their calls apart.
bool Enter() {
    constexpr uint8_t kLast = UINT8_MAX;
    if (g_tThread.ucNumber == 0)
        g_tThread.ucNumber = g_ucThreads < kLast ? ++g_ucThreads : kLast;
    if (g_tThread.ucNumber == kLast && g_bLastEntered)
        return false;
    g_bLastEntered = g_bLastEntered || g_tThread.ucNumber == kLast;
    g_tThread.bEntered = true;
    return true;
}

void Leave() {
    if (g_tThread.ucNumber == UINT8_MAX)
        g_bLastEntered = false;
    g_tThread.bEntered = false;
}

// Which function of the firmware runs in this thread is known when the process dies in it.
void NoteRunning(uint16_t wNumber) {
    memcpy(RunningCalls() + 2 * g_tThread.ucNumber, &wNumber, sizeof(wNumber));
}

void TellMissing(uint16_t wId) {
    if (StateNow() != State::kOn || !MarkOnce(g_aucMissing, wId) || !TellName(wId))
        return;
    if (uint8_t *const pucAt = RoomFor(0))
        Take(Block(pucAt, kMissing, 0, wId).End());
}

void OpenLocked() {
    if (StateNow() != State::kFresh)
        return;
    const bool bOpen = OpenFile();
    if (bOpen)
        TellStart(dlsym(RTLD_NEXT, "SDR_AddSpecificSensor"));
    SetState(bOpen ? State::kOn : State::kOff);
}

[[gnu::destructor]] void EndOfProcess() {
    if (StateNow() != State::kOn || !IsOurProcess())
        return;
    pthread_mutex_lock(&g_tLock);
    if (uint8_t *const pucAt = StateNow() == State::kOn ? RoomFor(0) : nullptr) {
        Take(Block(pucAt, kEnd, 0, 0).End());
        CloseFile();
    }
    SetState(State::kOff);
    pthread_mutex_unlock(&g_tLock);
}

} // namespace

bool Recording() {
    const State eState = StateNow();
    if (eState == State::kOff || g_tThread.bEntered)
        return false;
    const int nErrno = errno;
    if (eState == State::kFresh) {
        pthread_mutex_lock(&g_tLock);
        OpenLocked();
        pthread_mutex_unlock(&g_tLock);
    }
    if (StateNow() == State::kOn && !IsOurProcess())
        SetState(State::kOff);
    errno = nErrno;
    return StateNow() == State::kOn;
}

bool Tell(BlockKind eKind, uint16_t wId, const Part *ptParts, unsigned dwCount, const Part *ptResult,
          int nErrnoBefore, const uint8_t *pucBefore) {
    const int nErrno = errno;
    const bool bErrno = eKind == kEntryBegin || nErrno != nErrnoBefore;
    g_tThread.bLibraryRuns = false; // what a signal's handler calls meanwhile goes straight through
    pthread_mutex_lock(&g_tLock);
    const bool bTold = eKind != kEntryBegin || Enter();
    if (bTold && StateNow() == State::kOn)
        Telling(eKind, ptParts, dwCount, ptResult, pucBefore).Tell(wId, bErrno ? nErrno : kErrnoUntold);
    if (eKind == kEntryEnd)
        Leave();
    pthread_mutex_unlock(&g_tLock);
    g_tThread.bLibraryRuns = bTold && eKind != kEntryEnd;
    errno = nErrno;
    return bTold;
}

void *FindReal(uint16_t wId) {
    const int nErrno = errno;
    void *const pvReal = dlsym(RTLD_NEXT, NameOf(wId));
    __atomic_store_n(&g_apvReal[wId], pvReal, __ATOMIC_RELAXED);
    if (pvReal == nullptr) {
        pthread_mutex_lock(&g_tLock);
        TellMissing(wId);
        pthread_mutex_unlock(&g_tLock);
    }
    errno = nErrno;
    return pvReal;
}

// ---- through.h ------------------------------------------------------------------------------------------------------

Way::Way(BlockKind eBegin, uint16_t wId, const Part *ptParts, unsigned dwCount)
    : m_ptParts(ptParts), m_nErrno(errno), m_wId(wId), m_ucCount(static_cast<uint8_t>(dwCount)),
      m_eBegin(eBegin) {
    if (eBegin == kCall)
        Begin();
    else if (eBegin == kEntryBegin && !Tell(kEntryBegin, wId, ptParts, dwCount, nullptr, m_nErrno))
        m_eBegin = kNothing;
}

void Way::Begin() {
    g_tThread.bLibraryRuns = false;
    if ((__atomic_load_n(&g_aucNamed[m_wId / 8], __ATOMIC_RELAXED) >> (m_wId % 8) & 1) == 0) {
        pthread_mutex_lock(&g_tLock);
        if (StateNow() == State::kOn)
            TellName(m_wId);
        pthread_mutex_unlock(&g_tLock);
    }
    if (StateNow() == State::kOn)
        NoteRunning(static_cast<uint16_t>(m_wId + 1));
    for (unsigned i = 0; i < m_ucCount; ++i)
        if (m_ptParts[i].way == (kIn | kOut) && m_ptParts[i].data != nullptr &&
            m_ptParts[i].size <= sizeof(m_aucBefore))
            memcpy(m_aucBefore, m_ptParts[i].data, m_ptParts[i].size);
}

void Way::End(const Part *ptResult) {
    if (m_eBegin == kNothing)
        return;
    Tell(m_eBegin == kEntryBegin ? kEntryEnd : kCall, m_wId, m_ptParts, m_ucCount, ptResult, m_nErrno,
         m_aucBefore);
    if (StateNow() == State::kOn)
        NoteRunning(0);
}

} // namespace oxa::capture
