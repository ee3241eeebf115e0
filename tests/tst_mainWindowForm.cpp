#include "tests/support/WindowDriver.h"

#include <QTest>

using Qt::StringLiterals::operator""_s;

/// Every widget of the main window's form: name, geometry, text and picture.
class tst_mainWindowForm : public QObject
{
    Q_OBJECT

private slots:
    void hasEveryWidgetInItsPlace_data();
    void hasEveryWidgetInItsPlace();
    void showsTexts_data();
    void showsTexts();
    void writesTitleAndCaptionInRichText();
    void showsPictures_data();
    void showsPictures();
};

void tst_mainWindowForm::hasEveryWidgetInItsPlace_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QRect>("rectangle");
    QTest::addColumn<QSize>("styledMinimum");

    // Some style sheets set a minimum size (content, padding, border and margin) above the size in the form.
    // Qt applies it when the widget is first shown.
    const QSize none(0, 0);
    const QSize category(75 + 2 * 15 + 12, 28 + 2 * 6);
    const QSize outline(40 + 2 * 1, 28 + 2 * 1);
    const auto add = [](const char *name, const char *className, const QString &parent,
                         const QRect &rectangle, const QSize &minimum) {
        QTest::newRow(name) << QByteArray(className) << parent << rectangle << minimum;
    };
    add("label", "QLabel", u"page"_s, QRect(360, 20, 381, 61), none);
    add("listScanFolders", "QListWidget", u"page"_s, QRect(60, 120, 901, 421), none);
    add("btnAddFolder", "QPushButton", u"page"_s, QRect(80, 500, 75, 23), QSize(90, 36));
    add("btnScanOptions", "QPushButton", u"page"_s, QRect(60, 580, 121, 23), outline);
    add("btnStartScan", "QPushButton", u"page"_s, QRect(830, 580, 121, 23), QSize(120, 35));
    add("label_3", "QLabel", u"page"_s, QRect(360, 10, 51, 51), none);
    add("progressBar", "QProgressBar", u"scanpage"_s, QRect(130, 300, 751, 23), none);
    add("labelFilesScanned", "QLabel", u"scanpage"_s, QRect(130, 390, 81, 16), none);
    add("labelDuplicatesFound", "QLabel", u"scanpage"_s, QRect(330, 390, 81, 16), none);
    add("labelElapsedTime", "QLabel", u"scanpage"_s, QRect(520, 390, 91, 16), none);
    add("labelScanStatus", "QLabel", u"scanpage"_s, QRect(130, 270, 291, 16), none);
    add("labelCurrentFile", "QLabel", u"scanpage"_s, QRect(130, 340, 711, 16), none);
    add("labelFilesScannedValue", "QLabel", u"scanpage"_s, QRect(230, 390, 81, 16), none);
    add("labelDuplicatesFoundValue", "QLabel", u"scanpage"_s, QRect(420, 390, 81, 16), none);
    add("labelElapsedTimeValue", "QLabel", u"scanpage"_s, QRect(610, 390, 91, 20), none);
    add("btnStopScan", "QPushButton", u"scanpage"_s, QRect(780, 260, 75, 23), outline);
    add("label_2", "QLabel", u"scanpage"_s, QRect(430, 100, 141, 121), none);
    add("label_4", "QLabel", u"scanpage"_s, QRect(-40, 530, 1071, 171), none);
    add("btnBack", "QPushButton", u"duplicatespage"_s, QRect(360, 610, 75, 23), outline);
    add("btnRemoveSelected", "QPushButton", u"duplicatespage"_s, QRect(880, 610, 75, 23), QSize(90, 30));
    add("btnAudios", "QPushButton", u"duplicatespage"_s, QRect(440, 0, 79, 23), category);
    add("btnDocuments", "QPushButton", u"duplicatespage"_s, QRect(530, 0, 79, 23), category);
    add("btnArchives", "QPushButton", u"duplicatespage"_s, QRect(620, 0, 79, 23), category);
    add("btnAll", "QPushButton", u"duplicatespage"_s, QRect(170, 0, 79, 23), category);
    add("btnVideos", "QPushButton", u"duplicatespage"_s, QRect(350, 0, 79, 23), category);
    add("btnOthers", "QPushButton", u"duplicatespage"_s, QRect(710, 0, 79, 23), category);
    add("btnPictures", "QPushButton", u"duplicatespage"_s, QRect(260, 0, 79, 23), category);
    add("btnSelectAll", "QPushButton", u"duplicatespage"_s, QRect(780, 610, 75, 23), outline);
    add("labelStatsInfo", "QLabel", u"duplicatespage"_s, QRect(60, 620, 281, 16), none);
    add("btnUnselect", "QPushButton", u"duplicatespage"_s, QRect(680, 610, 75, 23), outline);
    add("treeWidgetBg", "QWidget", u"duplicatespage"_s, QRect(60, 50, 911, 541), none);
    add("treeDuplicates", "QTreeWidget", u"treeWidgetBg"_s, QRect(0, 0, 911, 521), none);
}

void tst_mainWindowForm::hasEveryWidgetInItsPlace()
{
    QFETCH(const QByteArray, className);
    QFETCH(const QString, parent);
    QFETCH(const QRect, rectangle);
    QFETCH(const QSize, styledMinimum);

    MainWindow window;
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(window.findChildren<QWidget *>(name).size(), 1);
    const auto *const widget = window.findChild<QWidget *>(name);
    QCOMPARE(QByteArray(widget->metaObject()->className()), className);
    QCOMPARE(widget->parentWidget()->objectName(), parent);
    QCOMPARE(widget->pos(), rectangle.topLeft());
    QVERIFY(
        widget->size() == rectangle.size() || widget->size() == rectangle.size().expandedTo(styledMinimum));

    window.show();
    auto *const pages = window.findChild<QStackedWidget *>(u"stackedWidget"_s);
    for (int i = 0; i < 3; ++i) {
        pages->setCurrentIndex(i);
        QCoreApplication::processEvents();
    }
    QCOMPARE(widget->geometry(), QRect(rectangle.topLeft(), rectangle.size().expandedTo(styledMinimum)));
}

void tst_mainWindowForm::showsTexts_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("btnAddFolder") << u" Add"_s;
    QTest::newRow("btnScanOptions") << u"Scan Options"_s;
    QTest::newRow("btnStartScan") << u"Scan"_s;
    QTest::newRow("label_2") << QString();
    QTest::newRow("label_3") << QString();
    QTest::newRow("label_4") << QString();
    QTest::newRow("labelDuplicatesFound") << u"Duplicate files:"_s;
    QTest::newRow("labelElapsedTime") << u"Elapsed time:"_s;
    QTest::newRow("labelScanStatus") << u"Waiting for scanning..."_s;
    QTest::newRow("labelCurrentFile") << u"Files currently being scanned:"_s;
    QTest::newRow("labelFilesScannedValue") << u"0"_s;
    QTest::newRow("labelDuplicatesFoundValue") << u"0"_s;
    QTest::newRow("labelElapsedTimeValue") << u"0"_s;
    QTest::newRow("btnStopScan") << u"Stop"_s;
    QTest::newRow("btnBack") << u"Back"_s;
    QTest::newRow("btnRemoveSelected") << u"Delete"_s;
    QTest::newRow("btnAudios") << u"Audios"_s;
    QTest::newRow("btnDocuments") << u"Documents"_s;
    QTest::newRow("btnArchives") << u"Archives"_s;
    QTest::newRow("btnAll") << u"All"_s;
    QTest::newRow("btnVideos") << u"Videos"_s;
    QTest::newRow("btnOthers") << u"Others"_s;
    QTest::newRow("btnPictures") << u"Pictures"_s;
    QTest::newRow("btnSelectAll") << u"Select All"_s;
    QTest::newRow("labelStatsInfo") << u"总共 0 组重复项，大小 0.00 GB"_s;
    QTest::newRow("btnUnselect") << u"Unselect"_s;
    QTest::newRow("btnHelp") << QString();
    QTest::newRow("btnMenu") << QString();
}

void tst_mainWindowForm::showsTexts()
{
    QFETCH(const QString, text);
    WindowDriver driver;
    QCOMPARE(driver.find(QTest::currentDataTag())->property("text").toString(), text);
}

void tst_mainWindowForm::writesTitleAndCaptionInRichText()
{
    WindowDriver driver;
    const QString title = driver.labelText("label");
    QCOMPARE(title.count(u"<p align=\"center\">"_s), 4);
    QCOMPARE(title.count(u"<p align=\"center\"><br/></p>"_s), 2);
    QVERIFY(title.contains(u"font-size:20pt; font-weight:700;\">Quillory</span></p>"_s));
    QVERIFY(title.contains(u">Remove duplicate files and free up valuable space on your PC!</p>"_s));
    const QString caption = driver.labelText("labelFilesScanned");
    QVERIFY(caption.contains(u"font-size:10pt;\">Files scanned:</span>"_s));
    for (const char *name : {"label", "labelFilesScanned"})
        QVERIFY(Qt::mightBeRichText(driver.labelText(name)));
}

void tst_mainWindowForm::showsPictures_data()
{
    QTest::addColumn<QString>("picture");
    QTest::addColumn<QSizePolicy>("policy");

    QSizePolicy illustration(QSizePolicy::Expanding, QSizePolicy::Expanding);
    QTest::newRow("label_3") << u":/icon/images/logo.png"_s
                             << QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    QTest::newRow("label_2") << u":/icon/images/scan_image_bg_1.png"_s << illustration;
    illustration.setHorizontalStretch(8);
    QTest::newRow("label_4") << u":/icon/images/scan_bg.png"_s << illustration;
}

void tst_mainWindowForm::showsPictures()
{
    QFETCH(const QString, picture);
    QFETCH(const QSizePolicy, policy);
    WindowDriver driver;
    const auto *const label = driver.find<QLabel>(QTest::currentDataTag());
    QVERIFY(!label->pixmap().isNull());
    QCOMPARE(label->pixmap().toImage(), QPixmap(picture).toImage());
    QVERIFY(label->hasScaledContents());
    QVERIFY(label->wordWrap());
    QCOMPARE(label->sizePolicy().horizontalPolicy(), policy.horizontalPolicy());
    QCOMPARE(label->sizePolicy().verticalPolicy(), policy.verticalPolicy());
    QCOMPARE(label->sizePolicy().horizontalStretch(), policy.horizontalStretch());
    QCOMPARE(label->sizePolicy().verticalStretch(), policy.verticalStretch());
}

QTEST_MAIN(tst_mainWindowForm)
#include "tst_mainWindowForm.moc"
