// SPDX-License-Identifier: MIT
#include "ShownTexts.h"
#include "WithYearOutputs.h"

#include <QDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// Taken from the texts as they were written into the code, before they
// moved to translation files. The table's digests leave out the entries
// that are compared filled in.
const QMap<QString, QByteArray> before = {
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

} // namespace

class TestShownUnchanged : public QObject
{
    Q_OBJECT

private slots:
    // On a mismatch the outputs are written to $TAVLO_OUTPUTS_DIR (when
    // set), to be compared with those of the version before.
    void everyTextIsAsBefore()
    {
        const QMap<QString, QByteArray> outputs = ShownTexts::outputs();
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

QTEST_GUILESS_MAIN(TestShownUnchanged)
#include "tst_shownunchanged.moc"
