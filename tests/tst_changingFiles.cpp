#include <QTest>
class tst_changingFiles : public QObject
{
    Q_OBJECT
};
QTEST_MAIN(tst_changingFiles)
#include "tst_changingFiles.moc"
