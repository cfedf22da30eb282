// SPDX-License-Identifier: MIT
#include "WithYearOutputs.h"

#include <QDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// 2,000 favorites (and the odd twin) born from 1800 to 2026, in all three
// languages at three moments, as the version before birthdays without a
// year showed them.
const int sampleSize = 2000;
const QMap<QString, QByteArray> before = {
    {u"calendar 0"_s, "1a1dd8d899764829753bf64afe04b5f71bbd2d341ce027635fbf25b3f1a59cf3"},
    {u"calendar 1"_s, "c8af85f9385e66149165d675bc54eca4f674d669d6e96a521f1e6cdc5b966dfd"},
    {u"calendar 2"_s, "0da2583cbdffe8fc24257686863971d7df8cad7e073c2081a09e36c55c72c5eb"},
    {u"cards 0"_s, "dce7bceaac00c28ca9a2c3c1f7f29e861d2d557aa1404bc10d3f68dd875551b5"},
    {u"cards 1"_s, "68fd7a835dd066488f724d70ffd334262b4093fab0f8d929618f62decf3aba06"},
    {u"cards 2"_s, "3668bfdad9e21de06854681bf2556357f0e7b3ac61372cd6409c944951c62f06"},
    {u"reminders 0"_s, "4ad7e57ef79cf7855aa52e305f98c2a5c771d210841378bcb9c024e2d498a4ee"},
    {u"reminders 1"_s, "5dba332e7b078c06879e6dd601327b13c357b244c6ad8bdc51e816defd4c5070"},
    {u"reminders 2"_s, "a4bbb1d083856154fec9f0f67846d069404dde628473c732e0579a23b94c83dd"},
    {u"reports 0"_s, "aa7d234c755b7d66278cd75a4a013b384b7dcdac0eff023c01556024b0112d6d"},
    {u"reports 1"_s, "2767ab71c1c43ca9515e87fd57860372fda18ed9775084a59df90dde6e86d8f5"},
    {u"reports 2"_s, "17b05416a6b279ec91be8fb54e9d8cdcc22aa7fb4494cdf65f02c3981542f2c8"},
    {u"vcards"_s, "73cc0ee5c99ee6efbf429ae06ea7a0cb4b84b7e80c627e457f248f0147324864"},
};

} // namespace

class TestWithYearUnchanged : public QObject
{
    Q_OBJECT

private slots:
    // On a mismatch the outputs are written to $TAVLO_OUTPUTS_DIR (when
    // set), to be compared with those of the version before.
    void everythingShownIsAsBefore()
    {
        const QMap<QString, QByteArray> outputs =
            WithYearOutputs::outputs(WithYearOutputs::sampleRows(sampleSize));
        const QMap<QString, QByteArray> now = WithYearOutputs::digests(outputs);
        if (qEnvironmentVariableIsSet("TAVLO_PRINT_DIGESTS")) {
            for (auto it = now.cbegin(); it != now.cend(); ++it)
                qInfo().noquote() << u"    {u\"%1\"_s, \"%2\"},"_s.arg(it.key(), it.value());
        }
        if (const QString dir = qEnvironmentVariable("TAVLO_OUTPUTS_DIR"); !dir.isEmpty()) {
            QDir().mkpath(dir);
            for (auto it = outputs.cbegin(); it != outputs.cend(); ++it) {
                QFile file(dir + u'/' + it.key());
                QVERIFY(file.open(QIODevice::WriteOnly) && file.write(it.value()) >= 0);
            }
        }
        QCOMPARE(now.keys(), before.keys());
        for (auto it = before.cbegin(); it != before.cend(); ++it)
            QVERIFY2(now.value(it.key()) == it.value(), qPrintable(it.key() + u" changed"_s));
    }
};

QTEST_GUILESS_MAIN(TestWithYearUnchanged)
#include "tst_withyearunchanged.moc"
