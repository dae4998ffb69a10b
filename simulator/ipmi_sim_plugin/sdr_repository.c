/* SPDX-License-Identifier: GPL-3.0-or-later */
/*
 * An SDR repository for ipmi_sim 2.0.33, whose own refuses conformant records (Add SDR), finds none to delete
 * (Delete SDR) and is corrupt once it was cleared.  ipmi_sim loads this with
 *     loadlib "<path>" "<file>"
 * before set_working_mc; <file>, which may be empty, holds the records of the start, back to back, and <file>.added
 * gets every record that is added later.  The commands 20h to 27h of the storage network function are answered
 * here, everything else stays the simulator's.
 *
 * As the service of a real BMC does, the repository gives the record id, and the number of a sensor that comes
 * with number 0 (its LUN too, once LUN 0 is full).
 */
#include <OpenIPMI/serv.h>

#include <OpenIPMI/mcserv.h>

#include <errno.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <time.h>

enum {
    kStorage = 0x0A, /* network function */
    kGetInfo = 0x20,
    kGetAllocation = 0x21,
    kReserve = 0x22,
    kGet = 0x23,
    kAdd = 0x24,
    kAddPart = 0x25,
    kDelete = 0x26,
    kClear = 0x27,

    kDone = 0x00, /* completion codes */
    kLengthMismatch = 0x80,
    kFull = 0xC4,
    kNotReserved = 0xC5,
    kWrongLength = 0xC7,
    kTooLong = 0xC8,
    kOutOfRange = 0xC9,
    kTooMuchAsked = 0xCA,
    kNotPresent = 0xCB,
    kInvalidField = 0xCC,

    kHeader = 5,      /* record id, version, type, length of the rest */
    kLargest = 64,    /* bytes of a record */
    kCapacity = 1023, /* records; so that the free space in bytes fits 16 bits */
    kLastRecord = 0xFFFF,
    kFirstSensorType = 1, /* full, compact, event-only: with owner, LUN and number behind the header */
    kLastSensorType = 3,
    kTypeAt = 3,
    kLengthAt = 4,
    kLunAt = 6,
    kNumberAt = 7,
    kNumbersPerLun = 254 /* 1 to 254; 255 is reserved */
};

static const uint8_t kLuns[] = {0, 1, 3}; /* LUN 2 carries system messages */

typedef struct {
    uint16_t id;
    uint8_t size;
    uint8_t bytes[kLargest];
} Record;

static Record records[kCapacity];
static unsigned count;
static uint16_t next_id = 1;
static unsigned next_number; /* counted over all LUNs, from 0 */
static uint16_t reservation; /* 0: none was made */
static uint32_t added_at, erased_at;
static char added_path[4096]; /* file of the records that were added; empty: none */
static Record part;           /* what Partial Add has brought so far; id 0: nothing */

static uint16_t Get16(const uint8_t *from) {
    return (uint16_t)(from[0] | from[1] << 8);
}

static void Put16(uint8_t *to, unsigned value) {
    to[0] = (uint8_t)value;
    to[1] = (uint8_t)(value >> 8);
}

static void Put32(uint8_t *to, uint32_t value) {
    Put16(to, value & 0xFFFF);
    Put16(to + 2, value >> 16);
}

/* Readers keep what they read as long as the time stamps stand still: every change moves them. */
static void Stamp(uint32_t *stamp) {
    const uint32_t now = (uint32_t)time(NULL);
    *stamp = now > *stamp ? now : *stamp + 1;
}

static Record *Find(uint16_t id) {
    for (unsigned i = 0; i < count; ++i)
        if (records[i].id == id)
            return &records[i];
    return NULL;
}

static int IsSensor(const uint8_t *record) {
    return record[kTypeAt] >= kFirstSensorType && record[kTypeAt] <= kLastSensorType;
}

static int NumberIsTaken(unsigned lun, unsigned number) {
    for (unsigned i = 0; i < count; ++i)
        if (IsSensor(records[i].bytes) && records[i].bytes[kNumberAt] == number &&
            (records[i].bytes[kLunAt] & 3) == lun)
            return 1;
    return 0;
}

/* The next number that no sensor has; one that was given is given again only after all others.  A sensor that
 * finds none keeps 0. */
static void GiveNumber(uint8_t *record) {
    for (unsigned tries = 0; tries < kNumbersPerLun * sizeof kLuns; ++tries) {
        const unsigned number = next_number % kNumbersPerLun + 1;
        const unsigned lun = kLuns[next_number / kNumbersPerLun];
        next_number = (next_number + 1) % (kNumbersPerLun * sizeof kLuns);
        if (!NumberIsTaken(lun, number)) {
            record[kLunAt] = (uint8_t)((record[kLunAt] & ~3u) | lun);
            record[kNumberAt] = (uint8_t)number;
            return;
        }
    }
}

static uint16_t FreeId(void) {
    while (next_id == 0 || next_id == kLastRecord || Find(next_id) != NULL)
        ++next_id;
    return next_id++;
}

/* The holder of the last reservation has to ask again. */
static void Unreserve(void) {
    reservation = reservation == 0xFFFF ? 1 : (uint16_t)(reservation + 1);
}

/* Whoever feeds the simulated sensors learns of a new one. */
static void Tell(const Record *record) {
    FILE *file = added_path[0] == '\0' ? NULL : fopen(added_path, "ab");
    if (file == NULL)
        return;
    fwrite(record->bytes, record->size, 1, file);
    fclose(file);
}

static uint8_t Store(const uint8_t *bytes, unsigned size, uint16_t *id) {
    if (size <= kHeader || size != kHeader + (unsigned)bytes[kLengthAt])
        return kWrongLength;
    if (size > kLargest)
        return kTooLong;
    if (count == kCapacity)
        return kFull;
    Record record = {.id = FreeId(), .size = (uint8_t)size};
    memcpy(record.bytes, bytes, size);
    Put16(record.bytes, record.id);
    if (IsSensor(record.bytes) && size > kNumberAt && record.bytes[kNumberAt] == 0)
        GiveNumber(record.bytes);
    records[count++] = record;
    Stamp(&added_at);
    Tell(&record);
    *id = record.id;
    return kDone;
}

/* ---- commands: data of the request in, data of the answer behind the completion code out ------------- */

/* *out_size is the room that the simulator has for an answer, 33 bytes of a record and no more; in the end the
 * bytes that are in it. */
typedef uint8_t (*Command)(const uint8_t *data, unsigned size, uint8_t *out, unsigned *out_size);

/* A command that names reservation 0 asks for none. */
static int ReservationIsStale(const uint8_t *data) {
    return Get16(data) != 0 && Get16(data) != reservation;
}

static uint8_t GetInfo(const uint8_t *data, unsigned size, uint8_t *out, unsigned *out_size) {
    (void)data, (void)size;
    out[0] = 0x51; /* IPMI 1.5 and 2.0 */
    Put16(out + 1, count);
    Put16(out + 3, (kCapacity - count) * kLargest);
    Put32(out + 5, added_at);
    Put32(out + 9, erased_at);
    out[13] = 0x2F; /* records come and go at any time; delete, partial add, reserve, allocation info */
    *out_size = 14;
    return kDone;
}

static uint8_t GetAllocation(const uint8_t *data, unsigned size, uint8_t *out, unsigned *out_size) {
    (void)data, (void)size;
    Put16(out, kCapacity);
    Put16(out + 2, kLargest);
    Put16(out + 4, kCapacity - count);
    Put16(out + 6, kCapacity - count);
    out[8] = 1; /* units that a record takes at most */
    *out_size = 9;
    return kDone;
}

static uint8_t Reserve(const uint8_t *data, unsigned size, uint8_t *out, unsigned *out_size) {
    (void)data, (void)size;
    Unreserve();
    Put16(out, reservation);
    *out_size = 2;
    return kDone;
}

/* reservation, record id (0 first, FFFFh last), offset, number of bytes (FFh all) -> id of the next, bytes */
static uint8_t Get(const uint8_t *data, unsigned size, uint8_t *out, unsigned *out_size) {
    if (size != 6)
        return kWrongLength;
    if (data[4] != 0 && Get16(data) != reservation)
        return kNotReserved;
    const uint16_t id = Get16(data + 2);
    const Record *record = id == 0 ? records : id == kLastRecord ? records + count - 1 : Find(id);
    if (count == 0 || record == NULL)
        return kNotPresent;
    if (data[4] >= record->size)
        return kOutOfRange;
    const unsigned rest = record->size - data[4];
    const unsigned wanted = data[5] < rest ? data[5] : rest;
    if (2 + wanted > *out_size)
        return kTooMuchAsked; /* readers ask for less then */
    Put16(out, record + 1 < records + count ? record[1].id : kLastRecord);
    memcpy(out + 2, record->bytes + data[4], wanted);
    *out_size = 2 + wanted;
    return kDone;
}

static uint8_t Add(const uint8_t *data, unsigned size, uint8_t *out, unsigned *out_size) {
    uint16_t id = 0;
    const uint8_t code = Store(data, size, &id);
    if (code == kDone) {
        Put16(out, id);
        *out_size = 2;
    }
    return code;
}

/* reservation, record id (0 opens a record), offset, 1 for the last part, bytes */
static uint8_t AddPart(const uint8_t *data, unsigned size, uint8_t *out, unsigned *out_size) {
    if (size < 7)
        return kWrongLength;
    if (ReservationIsStale(data))
        return kNotReserved;
    const unsigned bytes = size - 6;
    if (Get16(data + 2) == 0)
        part = (Record){.id = FreeId()};
    else if (part.id == 0 || Get16(data + 2) != part.id)
        return kNotPresent;
    if (data[4] != part.size)
        return kOutOfRange;
    if (bytes > sizeof part.bytes - part.size)
        return kTooLong;
    memcpy(part.bytes + part.size, data + 6, bytes);
    part.size = (uint8_t)(part.size + bytes);
    Put16(out, part.id);
    *out_size = 2;
    if ((data[5] & 0x0F) == 0)
        return kDone;
    next_id = part.id;
    part.id = 0;
    const uint8_t code = Add(part.bytes, part.size, out, out_size);
    return code == kWrongLength ? kLengthMismatch : code;
}

static uint8_t Delete(const uint8_t *data, unsigned size, uint8_t *out, unsigned *out_size) {
    if (size != 4)
        return kWrongLength;
    if (ReservationIsStale(data))
        return kNotReserved;
    Record *record = Find(Get16(data + 2));
    if (record == NULL)
        return kNotPresent;
    Put16(out, record->id);
    *out_size = 2;
    count--;
    memmove(record, record + 1, (size_t)(records + count - record) * sizeof *record);
    Unreserve();
    Stamp(&erased_at);
    return kDone;
}

/* reservation, "CLR", AAh to clear or 0 to ask how far it is -> 1, done */
static uint8_t Clear(const uint8_t *data, unsigned size, uint8_t *out, unsigned *out_size) {
    if (size != 6)
        return kWrongLength;
    if (ReservationIsStale(data))
        return kNotReserved;
    if (memcmp(data + 2, "CLR", 3) != 0 || (data[5] != 0xAA && data[5] != 0))
        return kInvalidField;
    if (data[5] == 0xAA) {
        count = 0;
        part.id = 0;
        Unreserve();
        Stamp(&erased_at);
    }
    out[0] = 1;
    *out_size = 1;
    return kDone;
}

static void Handle(lmc_data_t *mc, msg_t *msg, unsigned char *answer, unsigned int *answer_size, void *data) {
    (void)mc;
    unsigned size = *answer_size - 1;
    answer[0] = (*(const Command *)data)(msg->data, msg->len, answer + 1, &size);
    *answer_size = answer[0] == kDone ? size + 1 : 1;
}

/* ---- what ipmi_sim calls ------------------------------------------------------------------------------ */

static int LoadRecords(const char *path) {
    FILE *file = fopen(path, "rb");
    if (file == NULL) {
        fprintf(stderr, "%s: %s\n", path, strerror(errno));
        return errno;
    }
    uint8_t bytes[kHeader + 255];
    uint16_t id;
    int result = 0;
    while (result == 0 && fread(bytes, kHeader, 1, file) == 1) {
        const size_t rest = fread(bytes + kHeader, 1, bytes[kLengthAt], file);
        if (Store(bytes, kHeader + (unsigned)rest, &id) != kDone) {
            fprintf(stderr, "%s: record %u is damaged or too much\n", path, count + 1);
            result = EINVAL;
        }
    }
    fclose(file);
    return result;
}

int ipmi_sim_module_print_version(sys_data_t *sys, const char *options);
int ipmi_sim_module_print_version(sys_data_t *sys, const char *options) {
    (void)sys, (void)options;
    printf("oxa SDR repository\n");
    return 0;
}

int ipmi_sim_module_init(sys_data_t *sys, const char *options);
int ipmi_sim_module_init(sys_data_t *sys, const char *options) {
    static const Command commands[] = {GetInfo, GetAllocation, Reserve, Get, Add, AddPart, Delete, Clear};
    (void)sys;
    for (unsigned i = 0; i < sizeof commands / sizeof commands[0]; ++i) {
        const int failed = ipmi_emu_register_cmd_handler(kStorage, (unsigned char)(kGetInfo + i), Handle,
                                                         (void *)(uintptr_t)&commands[i]);
        if (failed)
            return failed;
    }
    if (options == NULL || options[0] == '\0')
        return 0;
    const int result = LoadRecords(options);
    snprintf(added_path, sizeof added_path, "%s.added", options);
    return result;
}
