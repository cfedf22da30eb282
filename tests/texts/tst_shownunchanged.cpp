// SPDX-License-Identifier: MIT
#include "ShownTexts.h"
#include "WithYearOutputs.h"

#include <QDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// 2,000 favorites (and the odd twin) born from 1800 to 2026, in all three
// languages at three moments, as they showed before birthdays without a
// year existed.
const int sampleSize = 2000;
const QMap<QString, QByteArray> withYearBefore = {
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

// Every other text, taken from the texts as they were written into the code, before they
// moved to translation files. The table's digests leave out the entries
// that are compared filled in.
const QMap<QString, QByteArray> textsBefore = {
    {u"counted de"_s, "762ef805ae3487c596fb2f2d7785c22c229ec1dfed8f90fb5ed8b2233a5d6887"},
    {u"counted en"_s, "6c06d54b3618e9e5def00124d9490fbcac3891d3b22602e846c79ab7b75e3eb6"},
    {u"counted ru"_s, "fd3da085c654c3e818fe313558020939783cb3d3b75edc51a3a14264bf86a2f4"},
    {u"greetings de"_s, "9ceef02fabcdbad48b9d05e4e8921a3ee0e8ef3a5d44540a6034c328ec24fdb9"},
    {u"greetings en"_s, "114f3e49258d96e756e0dcdc8768db7d5b246250fcce5a3564f1d908bb4fe100"},
    {u"greetings ru"_s, "a27ad749b40003048894337fa0c3de60c5465953b92482fa3ac2d2af2b2ab198"},
    {u"reports de"_s, "a9476dc82836636ee7c04e705e8464072e3323b93f5c0fe127841d1beb8ffe5d"},
    {u"reports en"_s, "82fa8073999f5d82d8c17f7b9b1b7524a1d0d85030c8ebb980670fe51d1e8394"},
    {u"reports ru"_s, "94a1ff2ed7879d9fd3701b2a8ef27a5932fd628db7fb19f274106d828000b73b"},
    {u"table de"_s, "6efedf1467b70dee6b7c542dc4a7a68f7e64a41bd35bf4b1b22300929c0bf4cc"},
    {u"table en"_s, "bcbd925389477721915cb131593a8b10e997d885b7113650c595f1367cd296ae"},
    {u"table ru"_s, "67d36856c29c0b4876f3c83ccc44312197d1bb16a0af07fd30180d1082d54807"},
};

// Outputs against the digests kept above. TAVLO_PRINT_DIGESTS=1 prints this
// build's digests in the form above; TAVLO_OUTPUTS_DIR=folder writes the
// outputs there, to compare with another build's.
QStringList changes(const QMap<QString, QByteArray> &outputs,
                    const QMap<QString, QByteArray> &before)
{
    const QMap<QString, QByteArray> now = WithYearOutputs::digests(outputs);
    if (qEnvironmentVariableIsSet("TAVLO_PRINT_DIGESTS")) {
        for (auto it = now.cbegin(); it != now.cend(); ++it)
            qInfo().noquote() << u"    {u\"%1\"_s, \"%2\"},"_s.arg(it.key(), it.value());
    }
    if (const QString dir = qEnvironmentVariable("TAVLO_OUTPUTS_DIR"); !dir.isEmpty()) {
        QDir().mkpath(dir);
        for (auto it = outputs.cbegin(); it != outputs.cend(); ++it) {
            QFile file(dir + u'/' + it.key());
            if (!file.open(QIODevice::WriteOnly) || file.write(it.value()) < 0)
                return {file.fileName() + u" cannot be written"_s};
        }
    }
    QStringList changed;
    for (auto it = before.cbegin(); it != before.cend(); ++it) {
        if (now.value(it.key()) != it.value())
            changed << it.key() + u" changed"_s;
    }
    for (const QString &key : now.keys()) {
        if (!before.contains(key))
            changed << key + u" is new"_s;
    }
    return changed;
}

} // namespace

// Everything a person sees, byte for byte as it was: whatever carries the
// texts and the rules, these outputs stay the same.
class TestShownUnchanged : public QObject
{
    Q_OBJECT

private slots:
    void favoritesWithAYear()
    {
        const QStringList changed = changes(
            WithYearOutputs::outputs(WithYearOutputs::sampleRows(sampleSize)), withYearBefore);
        QVERIFY2(changed.isEmpty(), qPrintable(changed.join(u'\n')));
    }

    void everyOtherText()
    {
        const QStringList changed = changes(ShownTexts::outputs(), textsBefore);
        QVERIFY2(changed.isEmpty(), qPrintable(changed.join(u'\n')));
    }
};

QTEST_GUILESS_MAIN(TestShownUnchanged)
#include "tst_shownunchanged.moc"
