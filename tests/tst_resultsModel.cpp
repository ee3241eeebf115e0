#include "tests/model/RandomUser.h"
#include "tests/support/MessageFilter.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// Random sequences of user actions on the results page while files change on disk. After every step the
/// window and the disk must match a small model of the rules.
///
/// QUILLORY_MODEL_SEQUENCES sets the number of sequences, QUILLORY_MODEL_SEED repeats a run. Tens of
/// thousands of sequences need a longer QTEST_FUNCTION_TIMEOUT (milliseconds).
class tst_resultsModel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void windowAndDiskMatchTheModel_data();
    void windowAndDiskMatchTheModel();
    void cleanupTestCase() const;

private:
    int m_sequences = 2000;
    quint32 m_seed = 0;
    Reached m_reached;
};

namespace {

constexpr int sequencesPerScan = 20;

} // namespace

void tst_resultsModel::initTestCase()
{
    dropRepeatedMessages();
    if (const int wanted = qEnvironmentVariableIntValue("QUILLORY_MODEL_SEQUENCES"); wanted > 0)
        m_sequences = wanted;
    m_seed = qEnvironmentVariableIsSet("QUILLORY_MODEL_SEED")
                 ? qEnvironmentVariable("QUILLORY_MODEL_SEED").toUInt()
                 : QRandomGenerator::global()->generate();
    qInfo("QUILLORY_MODEL_SEED=%u QUILLORY_MODEL_SEQUENCES=%d", m_seed, m_sequences);
}

void tst_resultsModel::windowAndDiskMatchTheModel_data()
{
    QTest::addColumn<QStringList>("folders");
    QTest::newRow("one folder") << QStringList{u"a"_s};
    QTest::newRow("two folders") << QStringList{u"a"_s, u"b"_s};
    QTest::newRow("a folder listed twice") << QStringList{u"b"_s, u"a"_s, u"a"_s};
    QTest::newRow("a folder inside another") << QStringList{u"a"_s, u"a/inside"_s};
}

void tst_resultsModel::windowAndDiskMatchTheModel()
{
    QFETCH(const QStringList, folders);
    const QTemporaryDir folder;
    RandomUser user(
        folder.path(), folders, m_seed + static_cast<quint32>(folders.size() + folders.last().size()));
    for (int i = 0; i < m_sequences / 4; ++i) {
        if (i % sequencesPerScan == 0)
            user.scan();
        if (user.failure().isEmpty())
            user.sequence();
        QVERIFY2(user.failure().isEmpty(), qPrintable(u'\n' + user.failure()));
    }
    m_reached.add(user.reached());
}

/// Checks the coverage: steps that never delete a file would match any model.
void tst_resultsModel::cleanupTestCase() const
{
    qInfo("later batches %d, deleted files %d, deletions with failures %d", m_reached.laterBatches,
        m_reached.deletedFiles, m_reached.deletionsWithFailures);
    if (m_reached.sequences >= 2000) {
        QVERIFY(m_reached.laterBatches > 10);
        QVERIFY(m_reached.deletedFiles > 500);
        QVERIFY(m_reached.deletionsWithFailures > 5);
    }
}

QTEST_MAIN(tst_resultsModel)
#include "tst_resultsModel.moc"
