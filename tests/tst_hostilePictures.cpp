#include <QTest>
class tst_hostilePictures : public QObject
{
    Q_OBJECT
};
QTEST_MAIN(tst_hostilePictures)
#include "tst_hostilePictures.moc"
