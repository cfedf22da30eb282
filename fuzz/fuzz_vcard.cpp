// SPDX-License-Identifier: MIT
#include "FuzzCheck.h"
#include "contacts/BirthdayImport.h"
#include "contacts/VCardReader.h"
#include "core/DatePattern.h"

#include <QByteArray>
#include <cstdint>

// The vCard reader and the import planner on any bytes. Beyond not crashing:
// a refused file yields no cards, and every planned favorite has a name and a
// record date that reads back as a real day not after today.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const VCardReader::Result read = VCardReader::read(bytes);
    if (read.error != VCardReader::Error::None)
        FUZZ_CHECK(read.contacts.isEmpty());
    const QDate today(2026, 11, 22);
    const ImportPlan plan = BirthdayImport::plan(read.contacts, {{"Ann", "12 3 1985"}}, today);
    FUZZ_CHECK(plan.summary.added + plan.summary.alreadyThere + plan.summary.skipped() ==
               read.contacts.size());
    FUZZ_CHECK(plan.additions.size() == plan.summary.added);
    static const DatePattern record(u"d M yyyy");
    for (const Favorite &favorite : plan.additions) {
        FUZZ_CHECK(!favorite.name.isEmpty());
        const std::optional<QDate> date = record.parse(favorite.birthday);
        FUZZ_CHECK(date && *date <= today);
    }
    return 0;
}
