// SPDX-License-Identifier: MIT
// Our calendar differences against ICU's Gregorian calendar, on random pairs
// of moments. ICU's fieldDifference advances the calendar by what it counted,
// so years, months and days taken one after the other on one calendar use the
// same running start as CalendarDifference::yearsMonthsDays. ICU keeps its own
// zone data and does its own calendar arithmetic, which makes it a useful
// second opinion on month ends, times of day and clock changes.

#include "TimeZoneScope.h"
#include "core/AgeCalculator.h"
#include "core/CalendarDifference.h"

#include <QDateTime>
#include <QList>
#include <QRandomGenerator>
#include <QTest>

#include <unicode/basictz.h>
#include <unicode/calendar.h>
#include <unicode/gregocal.h>
#include <unicode/timezone.h>
#include <unicode/tztrans.h>

#include <algorithm>
#include <memory>
#include <string>

namespace {

constexpr qint64 msPerMinute = 60'000;
constexpr qint64 msPerHour = 60 * msPerMinute;
constexpr qint64 msPerDay = 24 * msPerHour;

constexpr int pairsPerZone = 5000;
// Each zone draws from its own seed so that its rows can be rerun alone;
// TAVLO_ORACLE_SEED moves all of them to try other pairs.
constexpr quint32 defaultSeed = 0x7a1f0c3d;

QDate firstDate()
{
    return QDate(1850, 1, 1);
}

QDate lastDate()
{
    return QDate(2150, 12, 31);
}

qint64 floorDiv(qint64 a, qint64 b)
{
    return a / b - ((a % b != 0) && ((a < 0) != (b < 0)) ? 1 : 0);
}

// ICU's default zone is cached, so the process's TZ alone does not move it.
class IcuDefaultZoneScope
{
public:
    explicit IcuDefaultZoneScope(const QByteArray &zone)
        : m_previous(icu::TimeZone::createDefault())
    {
        icu::TimeZone::adoptDefault(
            icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(zone.constData())));
    }
    ~IcuDefaultZoneScope() { icu::TimeZone::adoptDefault(m_previous.release()); }
    IcuDefaultZoneScope(const IcuDefaultZoneScope &) = delete;
    IcuDefaultZoneScope &operator=(const IcuDefaultZoneScope &) = delete;

private:
    std::unique_ptr<icu::TimeZone> m_previous;
};

// A change of the zone's UTC offset (daylight saving or standard), in ms.
struct Transition
{
    qint64 at;
    qint64 before;
    qint64 after;
};

QList<Transition> transitionsOf(const icu::TimeZone &zone, qint64 from, qint64 to)
{
    QList<Transition> result;
    const auto *basic = dynamic_cast<const icu::BasicTimeZone *>(&zone);
    if (!basic)
        return result;
    icu::TimeZoneTransition transition;
    UDate base = UDate(from);
    while (basic->getNextTransition(base, false, transition) && transition.getTime() < UDate(to)) {
        const icu::TimeZoneRule *before = transition.getFrom();
        const icu::TimeZoneRule *after = transition.getTo();
        const qint64 offsetBefore = qint64(before->getRawOffset()) + before->getDSTSavings();
        const qint64 offsetAfter = qint64(after->getRawOffset()) + after->getDSTSavings();
        if (offsetBefore != offsetAfter)
            result.append({qint64(transition.getTime()), offsetBefore, offsetAfter});
        base = transition.getTime();
    }
    return result;
}

// A local date and time of day as ICU reads an instant.
struct Wall
{
    QDate date;
    qint64 msOfDay = 0;
    qint64 offset = 0;
};

Wall icuWall(icu::Calendar &calendar, qint64 instant, UErrorCode &status)
{
    calendar.setTime(UDate(instant), status);
    Wall wall;
    wall.date = QDate(calendar.get(UCAL_EXTENDED_YEAR, status),
                      calendar.get(UCAL_MONTH, status) + 1, calendar.get(UCAL_DATE, status));
    wall.msOfDay = calendar.get(UCAL_MILLISECONDS_IN_DAY, status);
    wall.offset =
        qint64(calendar.get(UCAL_ZONE_OFFSET, status)) + calendar.get(UCAL_DST_OFFSET, status);
    return wall;
}

struct Pair
{
    qint64 birth;
    qint64 now;
    const char *kind;
};

// Draws pairs of instants, birth before now, both between 1850 and 2150. A
// share of them sits where calendars tend to go wrong: month ends, 29
// February, a time of day just past now's, and the days the clocks change.
class PairSource
{
public:
    PairSource(quint32 seed, QList<Transition> transitions, UErrorCode &status)
        : m_rng(seed), m_transitions(std::move(transitions)),
          m_calendar(icu::TimeZone::createDefault(), icu::Locale::getRoot(), status)
    {
        m_calendar.setLenient(true);
    }

    Pair next()
    {
        for (;;) {
            Pair pair = draw();
            pair.birth = held(pair.birth);
            pair.now = held(pair.now);
            if (pair.birth < pair.now && inRange(pair.birth) && inRange(pair.now))
                return pair;
        }
    }

    // Moments that a local QDateTime could not hold as drawn.
    int movedMoments() const { return m_moved; }

private:
    // The instant a local QDateTime made from `instant` stands for. Qt keeps
    // local time and a daylight-saving flag, which cannot tell apart the two
    // passes of an hour repeated between two summer-time offsets (Berlin,
    // 1945 and 1947); both sides must see the same instant.
    qint64 held(qint64 instant)
    {
        const qint64 result =
            QDateTime::fromMSecsSinceEpoch(instant, Qt::LocalTime).toMSecsSinceEpoch();
        if (result != instant)
            ++m_moved;
        return result;
    }

    // Uniform pairs and the time-of-day case take two shares each, the
    // others one.
    Pair draw()
    {
        switch (m_rng.bounded(9)) {
        case 0:
        case 1:
            return uniform();
        case 2:
            return shortSpan();
        case 3:
            return monthEnds();
        case 4:
        case 5:
            return sameDayEarlierTime();
        case 6:
            return clockChangeAtNow();
        case 7:
            return clockChangeAtBirth();
        default:
            return clockChangeAtBoth();
        }
    }

    Pair uniform()
    {
        const QDate birth = dateBetween(firstDate(), lastDate());
        const QDate now = dateBetween(birth, lastDate());
        return {instant(birth, timeOfDay()), instant(now, timeOfDay()), "uniform"};
    }

    Pair shortSpan()
    {
        const QDate birth = dateBetween(firstDate(), lastDate().addDays(-400));
        const QDate now = birth.addDays(m_rng.bounded(400));
        return {instant(birth, timeOfDay()), instant(now, timeOfDay()), "short span"};
    }

    // Born on the 28th to 31st or on 29 February; now often on a month end or
    // the 1st, where adding months pins the day.
    Pair monthEnds()
    {
        QDate birth;
        if (m_rng.bounded(5) == 0) {
            int year = 1852 + 4 * m_rng.bounded(75);
            if (!QDate::isLeapYear(year))
                year += 4;
            birth = QDate(year, 2, 29);
        } else {
            birth = nearMonthEnd(m_rng.bounded(1850, 2150), m_rng.bounded(1, 13));
        }
        QDate now;
        if (m_rng.bounded(2) == 0) {
            now = dateBetween(birth, lastDate());
        } else {
            const int years = m_rng.bounded(2) == 0 ? m_rng.bounded(3) : m_rng.bounded(300);
            now = nearMonthEnd(birth.year() + years, m_rng.bounded(1, 13));
        }
        return {instant(birth, timeOfDay()), instant(now, timeOfDay()), "month end"};
    }

    // The day of the month comes round again, but the time of day of birth
    // has not yet; sometimes it has, to the millisecond or just past.
    Pair sameDayEarlierTime()
    {
        const QDate birth = dateBetween(firstDate(), lastDate());
        const qint64 birthTime = msPerHour + m_rng.bounded(msPerDay - msPerHour);
        const int steps = m_rng.bounded(2) == 0 ? m_rng.bounded(1, 25) : m_rng.bounded(1, 3600);
        const QDate now = m_rng.bounded(3) == 0 ? birth.addYears(std::max(1, steps / 12))
                                                : birth.addMonths(steps);
        qint64 nowTime = birthTime;
        switch (m_rng.bounded(5)) {
        case 0:
            break;
        case 1:
            nowTime += 1 + m_rng.bounded(2 * msPerHour);
            break;
        case 2:
            nowTime -= 1 + m_rng.bounded(1000);
            break;
        default:
            nowTime -= 1 + m_rng.bounded(2 * msPerHour);
            break;
        }
        return {instant(birth, birthTime), instant(now, nowTime),
                "same day of month, earlier time"};
    }

    // Now around a clock change; born at a time of day that the change skips
    // or repeats, so that counting towards now lands in the gap or the overlap.
    Pair clockChangeAtNow()
    {
        const Transition &t = anyTransition();
        const qint64 now = nearTransition(t);
        const QDate nowDate = wallOf(now).date;
        QDate birth;
        switch (m_rng.bounded(4)) {
        case 0:
            birth = nowDate.addYears(
                -(m_rng.bounded(2) == 0 ? m_rng.bounded(1, 4) : m_rng.bounded(1, 150)));
            break;
        case 1:
            birth = nowDate.addMonths(-m_rng.bounded(1, 37));
            break;
        case 2:
            birth = nowDate.addDays(-m_rng.bounded(61));
            break;
        default:
            birth = dateBetween(firstDate(), nowDate);
            break;
        }
        return {instant(birth, affectedTimeOfDay(t)), now, "clock change at now"};
    }

    // Born in or right next to the skipped or repeated hour; now on a later
    // day at about the same time of day.
    Pair clockChangeAtBirth()
    {
        const Transition &t = anyTransition();
        const qint64 birth = nearTransition(t);
        const Wall wall = wallOf(birth);
        QDate now;
        switch (m_rng.bounded(4)) {
        case 0:
            now = wall.date.addYears(m_rng.bounded(2) == 0 ? m_rng.bounded(1, 4)
                                                           : m_rng.bounded(1, 150));
            break;
        case 1:
            now = wall.date.addMonths(m_rng.bounded(1, 37));
            break;
        case 2:
            now = wall.date.addDays(m_rng.bounded(61));
            break;
        default:
            now = dateBetween(wall.date, lastDate());
            break;
        }
        const qint64 nowTime = wall.msOfDay - 2 * msPerHour + m_rng.bounded(4 * msPerHour);
        return {birth, instant(now, nowTime), "clock change at birth"};
    }

    // Both moments near clock changes that go the same way.
    Pair clockChangeAtBoth()
    {
        const qsizetype count = m_transitions.size();
        for (;;) {
            const qsizetype i = m_rng.bounded(qint64(count - 1));
            const qsizetype j =
                i + 1 + m_rng.bounded(qint64(std::min<qsizetype>(count - i - 1, 40)));
            const Transition &a = m_transitions[i];
            const Transition &b = m_transitions[j];
            if ((a.after > a.before) == (b.after > b.before))
                return {nearTransition(a), nearTransition(b), "clock change at both"};
        }
    }

    const Transition &anyTransition()
    {
        return m_transitions[m_rng.bounded(qint64(m_transitions.size()))];
    }

    // An instant in the repeated stretch (either time round) or in the half
    // hour either side of the change.
    qint64 nearTransition(const Transition &t)
    {
        const qint64 span = std::abs(t.after - t.before);
        return t.at - span - 30 * msPerMinute + m_rng.bounded(2 * span + 60 * msPerMinute);
    }

    // A time of day inside the stretch of local time that the change skips
    // or repeats, or a little outside it.
    qint64 affectedTimeOfDay(const Transition &t)
    {
        const qint64 span = std::abs(t.after - t.before);
        const qint64 wallStart = t.at + std::min(t.before, t.after);
        const qint64 start = wallStart - floorDiv(wallStart, msPerDay) * msPerDay;
        if (m_rng.bounded(10) < 7)
            return start + m_rng.bounded(span);
        return start - 30 * msPerMinute + m_rng.bounded(span + 60 * msPerMinute);
    }

    QDate nearMonthEnd(int year, int month)
    {
        const QDate first(year, month, 1);
        if (m_rng.bounded(6) == 0)
            return first.addMonths(1); // the 1st right after
        return QDate(year, month, std::min(28 + m_rng.bounded(4), first.daysInMonth()));
    }

    QDate dateBetween(QDate from, QDate to)
    {
        return from.addDays(m_rng.bounded(from.daysTo(to) + 1));
    }

    qint64 timeOfDay() { return m_rng.bounded(msPerDay); }

    // The instant of a local date and time of day as ICU resolves it; a time
    // of day past either end of the day carries into the next or previous.
    qint64 instant(QDate date, qint64 msOfDay)
    {
        const qint64 days = floorDiv(msOfDay, msPerDay);
        date = date.addDays(days);
        msOfDay -= days * msPerDay;
        UErrorCode status = U_ZERO_ERROR;
        m_calendar.clear();
        m_calendar.set(date.year(), date.month() - 1, date.day());
        m_calendar.set(UCAL_MILLISECOND, int(msOfDay));
        const UDate result = m_calendar.getTime(status);
        return U_SUCCESS(status) ? qint64(result) : 0;
    }

    Wall wallOf(qint64 instant)
    {
        UErrorCode status = U_ZERO_ERROR;
        return icuWall(m_calendar, instant, status);
    }

    bool inRange(qint64 instant)
    {
        const QDate date = wallOf(instant).date;
        return date >= firstDate() && date <= lastDate();
    }

    QRandomGenerator m_rng;
    QList<Transition> m_transitions;
    icu::GregorianCalendar m_calendar;
    int m_moved = 0;
};

struct Counts
{
    qint64 years = 0;
    qint64 months = 0;
    qint64 days = 0;
    qint64 totalMonths = 0;
    qint64 totalDays = 0;
    qint64 totalWeeks = 0;

    bool operator==(const Counts &) const = default;
};

Counts icuCounts(icu::Calendar &calendar, qint64 birth, qint64 now, UErrorCode &status)
{
    Counts counts;
    calendar.setTime(UDate(birth), status);
    counts.years = calendar.fieldDifference(UDate(now), UCAL_YEAR, status);
    counts.months = calendar.fieldDifference(UDate(now), UCAL_MONTH, status);
    counts.days = calendar.fieldDifference(UDate(now), UCAL_DATE, status);
    calendar.setTime(UDate(birth), status);
    counts.totalDays = calendar.fieldDifference(UDate(now), UCAL_DATE, status);
    calendar.setTime(UDate(birth), status);
    counts.totalMonths = calendar.fieldDifference(UDate(now), UCAL_MONTH, status);
    counts.totalWeeks = counts.totalDays / 7;
    return counts;
}

Counts ourCounts(const QDateTime &birth, const QDateTime &now)
{
    const YearsMonthsDays ymd = CalendarDifference::yearsMonthsDays(birth, now);
    const AgeFacts facts = computeAge(birth, now);
    return {ymd.years, ymd.months, ymd.days, facts.totalMonths, facts.totalDays, facts.totalWeeks};
}

QString describe(const Counts &c)
{
    return QStringLiteral("%1y %2m %3d, in months %4, in days %5, in weeks %6")
        .arg(c.years)
        .arg(c.months)
        .arg(c.days)
        .arg(c.totalMonths)
        .arg(c.totalDays)
        .arg(c.totalWeeks);
}

QString offsetText(qint64 offsetMs)
{
    const qint64 minutes = std::abs(offsetMs) / msPerMinute;
    const qint64 seconds = std::abs(offsetMs) % msPerMinute / 1000;
    QString text = QStringLiteral("%1%2:%3")
                       .arg(QChar(offsetMs < 0 ? u'-' : u'+'))
                       .arg(minutes / 60, 2, 10, QLatin1Char('0'))
                       .arg(minutes % 60, 2, 10, QLatin1Char('0'));
    if (seconds != 0)
        text += QStringLiteral(":%1").arg(seconds, 2, 10, QLatin1Char('0'));
    return text;
}

// The moment as we read it, with its offset, and as ICU reads it, so that a
// difference in zone data shows apart from one in the arithmetic.
QString describe(const QDateTime &moment, icu::Calendar &calendar)
{
    UErrorCode status = U_ZERO_ERROR;
    const Wall wall = icuWall(calendar, moment.toMSecsSinceEpoch(), status);
    const QString ours = moment.date().toString(Qt::ISODate) + u'T' +
                         moment.time().toString(Qt::ISODateWithMs) +
                         offsetText(qint64(moment.offsetFromUtc()) * 1000);
    const QString icus =
        wall.date.toString(Qt::ISODate) + u'T' +
        QTime::fromMSecsSinceStartOfDay(int(wall.msOfDay)).toString(Qt::ISODateWithMs) +
        offsetText(wall.offset);
    return QStringLiteral("%1 (%2 ms since 1970; ICU reads %3)")
        .arg(ours)
        .arg(moment.toMSecsSinceEpoch())
        .arg(icus);
}

} // namespace

class TestCalendarOracle : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithIcu_data();
    void agreesWithIcu();
};

void TestCalendarOracle::agreesWithIcu_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<quint32>("seed");

    bool ok = false;
    const quint32 base = qEnvironmentVariable("TAVLO_ORACLE_SEED").toUInt(&ok, 0);
    const quint32 seed = ok ? base : defaultSeed;
    QTest::newRow("Europe/Berlin") << QByteArray("Europe/Berlin") << seed;
    QTest::newRow("America/Los_Angeles") << QByteArray("America/Los_Angeles") << seed + 1;
    QTest::newRow("Australia/Sydney") << QByteArray("Australia/Sydney") << seed + 2;
}

void TestCalendarOracle::agreesWithIcu()
{
    QFETCH(QByteArray, zone);
    QFETCH(quint32, seed);

    const TimeZoneScope processZone(zone);
    const IcuDefaultZoneScope icuZone(zone);

    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar(status);
    QVERIFY2(U_SUCCESS(status), u_errorName(status));
    icu::UnicodeString id;
    std::string icuZoneId;
    calendar.getTimeZone().getID(id).toUTF8String(icuZoneId);
    QCOMPARE(QByteArray::fromStdString(icuZoneId), zone);

    // Both must be in the zone before their answers mean anything.
    for (const qint64 probe : {Q_INT64_C(1610712000000), Q_INT64_C(1626350400000)}) {
        const Wall wall = icuWall(calendar, probe, status);
        QCOMPARE(qint64(QDateTime::fromMSecsSinceEpoch(probe, Qt::LocalTime).offsetFromUtc()) *
                     1000,
                 wall.offset);
    }

    const qint64 from = QDateTime(firstDate(), QTime(0, 0), Qt::UTC).toMSecsSinceEpoch();
    const qint64 to = QDateTime(lastDate(), QTime(0, 0), Qt::UTC).toMSecsSinceEpoch();
    const QList<Transition> transitions = transitionsOf(calendar.getTimeZone(), from, to);
    QVERIFY2(transitions.size() > 100, "the zone should change its clocks often enough to test");

    PairSource source(seed, transitions, status);
    QVERIFY2(U_SUCCESS(status), u_errorName(status));

    const QString context = QStringLiteral("zone %1, seed 0x%2")
                                .arg(QString::fromLatin1(zone))
                                .arg(seed, 8, 16, QLatin1Char('0'));
    int checked = 0;
    int mismatches = 0;
    QStringList reported;
    for (int i = 0; i < pairsPerZone; ++i) {
        const Pair pair = source.next();
        const QDateTime birth = QDateTime::fromMSecsSinceEpoch(pair.birth, Qt::LocalTime);
        const QDateTime now = QDateTime::fromMSecsSinceEpoch(pair.now, Qt::LocalTime);

        const Counts ours = ourCounts(birth, now);
        const Counts icus = icuCounts(calendar, pair.birth, pair.now, status);
        if (U_FAILURE(status))
            QFAIL(qPrintable(QStringLiteral("%1, pair %2: ICU failed with %3")
                                 .arg(context)
                                 .arg(i)
                                 .arg(QString::fromLatin1(u_errorName(status)))));
        ++checked;
        if (ours == icus)
            continue;
        ++mismatches;
        if (reported.size() < 5) {
            reported << QStringLiteral(
                            "pair %1 (%2):\n  birth %3\n  now   %4\n  ours  %5\n  ICU   %6")
                            .arg(i)
                            .arg(QString::fromLatin1(pair.kind))
                            .arg(describe(birth, calendar))
                            .arg(describe(now, calendar))
                            .arg(describe(ours))
                            .arg(describe(icus));
        }
    }
    qInfo("%s: %d pairs checked against ICU (%d moments moved to what a local QDateTime holds)",
          zone.constData(), checked, source.movedMoments());
    if (mismatches != 0) {
        QFAIL(qPrintable(QStringLiteral("%1: %2 of %3 pairs differ from ICU; the first:\n%4")
                             .arg(context)
                             .arg(mismatches)
                             .arg(checked)
                             .arg(reported.join(u'\n'))));
    }
}

QTEST_GUILESS_MAIN(TestCalendarOracle)
#include "tst_calendaroracle.moc"
