#include "scan/ScanOptionsDialog.h"

#include "tests/support/OptionsDialog.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// The scan options dialog without the main window.
class tst_scanOptionsDialog : public QObject
{
    Q_OBJECT

private slots:
    void hasEveryWidgetInItsPlace_data();
    void hasEveryWidgetInItsPlace();
    void writesItsCaptionsInRichText_data();
    void writesItsCaptionsInRichText();
    void hasAFixedSizeAndATitle();
    void declaresNoSlotsAndSignals();
    void offersUnitsAndSizes();
    void opensWithEverythingChecked();
    void readsTypesInTheOrderOfTheirBoxes();
    void readsEachTypeBox_data();
    void readsEachTypeBox();
    void readsEachSkipBox();
    void showsTheGivenOptions();
    void ignoresUnknownUnits();
    void acceptsAndRejectsByButton();
};

void tst_scanOptionsDialog::hasEveryWidgetInItsPlace_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<QRect>("rectangle");
    QTest::addColumn<QString>("text");

    const auto add = [](const char *name, const char *className, const QRect &rectangle,
                         const QString &text) {
        QTest::newRow(name) << QByteArray(className) << rectangle << text;
    };
    add("chkTypeArchive", "QCheckBox", QRect(90, 80, 80, 19), u"Archive"_s);
    add("chkTypeDoc", "QCheckBox", QRect(190, 80, 80, 19), u"Document"_s);
    add("chkTypeAudio", "QCheckBox", QRect(300, 80, 80, 19), u"Audios"_s);
    add("chkTypeVideo", "QCheckBox", QRect(400, 80, 80, 19), u"Videos"_s);
    add("chkTypePhoto", "QCheckBox", QRect(510, 80, 80, 19), u"Photos"_s);
    add("chkTypeOthers", "QCheckBox", QRect(620, 80, 80, 19), u"Others"_s);
    add("label", "QLabel", QRect(90, 44, 53, 21), QString());
    add("label_3", "QLabel", QRect(90, 150, 121, 21), QString());
    add("label_4", "QLabel", QRect(90, 190, 121, 21), QString());
    add("comboMinUnit", "QComboBox", QRect(370, 150, 41, 22), QString());
    add("spinMinSize", "QSpinBox", QRect(220, 150, 151, 22), QString());
    add("spinMaxSize", "QSpinBox", QRect(220, 190, 151, 22), QString());
    add("comboMaxUnit", "QComboBox", QRect(370, 190, 41, 22), QString());
    add("chkSkipSystem", "QCheckBox", QRect(90, 290, 131, 19), u"Skip system files"_s);
    add("chkSkipApps", "QCheckBox", QRect(90, 320, 191, 19), u"Skip applications"_s);
    add("chkSkipHiddenFolder", "QCheckBox", QRect(90, 350, 201, 19), u"Skip hidden folders"_s);
    add("chkSkipDesktop", "QCheckBox", QRect(90, 380, 161, 19), u"Skip desktop"_s);
    add("label_5", "QLabel", QRect(90, 260, 121, 21), QString());
    add("btnCancelScanOptions", "QPushButton", QRect(580, 420, 75, 23), u"Cancel"_s);
    add("btnOkScanOptions", "QPushButton", QRect(670, 420, 75, 23), u"OK"_s);
}

void tst_scanOptionsDialog::hasEveryWidgetInItsPlace()
{
    QFETCH(const QByteArray, className);
    QFETCH(const QRect, rectangle);
    QFETCH(const QString, text);

    ScanOptionsDialog dialog;
    const auto *const widget = child<QWidget>(&dialog, QTest::currentDataTag());
    QVERIFY(widget);
    QCOMPARE(QByteArray(widget->metaObject()->className()), className);
    QCOMPARE(widget->parentWidget(), &dialog);
    QCOMPARE(widget->geometry(), rectangle);
    if (qobject_cast<const QAbstractButton *>(widget))
        QCOMPARE(widget->property("text").toString(), text);
    dialog.show();
    QCoreApplication::processEvents();
    QCOMPARE(widget->geometry(), rectangle);
}

void tst_scanOptionsDialog::writesItsCaptionsInRichText_data()
{
    QTest::addColumn<QString>("paragraph");
    QTest::newRow("label") << u"<p><span style=\" font-size:12pt;\">Types:</span></p>"_s;
    QTest::newRow("label_3") << u"<p><span style=\" font-size:10pt;\">Minimum file size</span></p>"_s;
    QTest::newRow("label_4") << u"<p>Maximum file size: </p>"_s;
    QTest::newRow("label_5") << u"<p><span style=\" font-size:11pt;\">File Protection:</span></p>"_s;
}

void tst_scanOptionsDialog::writesItsCaptionsInRichText()
{
    QFETCH(const QString, paragraph);
    const ScanOptionsDialog dialog;
    QCOMPARE(child<QLabel>(&dialog, QTest::currentDataTag())->text(),
        u"<html><head/><body>%1</body></html>"_s.arg(paragraph));
}

void tst_scanOptionsDialog::hasAFixedSizeAndATitle()
{
    const ScanOptionsDialog dialog;
    QCOMPARE(dialog.objectName(), u"ScanOptionsDialog"_s);
    QCOMPARE(dialog.windowTitle(), u"Dialog"_s);
    QCOMPARE(dialog.styleSheet(), u"background:rgb(255, 255, 255)"_s);
    QCOMPARE(dialog.minimumSize(), QSize(793, 490));
    QCOMPARE(dialog.maximumSize(), QSize(793, 490));
}

void tst_scanOptionsDialog::declaresNoSlotsAndSignals()
{
    const QMetaObject &meta = ScanOptionsDialog::staticMetaObject;
    QCOMPARE(QByteArray(meta.superClass()->className()), QByteArray("QDialog"));
    QCOMPARE(meta.methodCount(), meta.methodOffset());
}

void tst_scanOptionsDialog::offersUnitsAndSizes()
{
    const ScanOptionsDialog dialog;
    for (const char *name : {"comboMinUnit", "comboMaxUnit"}) {
        const auto *const combo = child<QComboBox>(&dialog, name);
        QStringList items;
        for (int i = 0; i < combo->count(); ++i)
            items.append(combo->itemText(i));
        QCOMPARE(items, (QStringList{u"KB"_s, u"MB"_s, u"GB"_s}));
        QVERIFY(!combo->isEditable());
    }
    auto *const minimum = child<QSpinBox>(&dialog, "spinMinSize");
    auto *const maximum = child<QSpinBox>(&dialog, "spinMaxSize");
    for (QSpinBox *spin : {minimum, maximum}) {
        spin->setValue(100000);
        QCOMPARE(spin->minimum(), 0);
    }
    QCOMPARE(minimum->value(), 99);
    QCOMPARE(maximum->value(), 9999);
}

void tst_scanOptionsDialog::opensWithEverythingChecked()
{
    const ScanOptionsDialog dialog;
    QCOMPARE(checks(&dialog), u"xxxxxx xxxx"_s);
    for (const char *name : {"spinMinSize", "spinMaxSize"})
        QCOMPARE(child<QSpinBox>(&dialog, name)->value(), 0);
    for (const char *name : {"comboMinUnit", "comboMaxUnit"})
        QCOMPARE(child<QComboBox>(&dialog, name)->currentText(), u"KB"_s);
}

void tst_scanOptionsDialog::readsTypesInTheOrderOfTheirBoxes()
{
    const ScanOptionsDialog dialog;
    QCOMPARE(dialog.getOptions().fileTypes,
        (QStringList{u"archive"_s, u"document"_s, u"audio"_s, u"video"_s, u"picture"_s, u"other"_s}));
}

void tst_scanOptionsDialog::readsEachTypeBox_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("chkTypeArchive") << u"archive"_s;
    QTest::newRow("chkTypeDoc") << u"document"_s;
    QTest::newRow("chkTypeAudio") << u"audio"_s;
    QTest::newRow("chkTypeVideo") << u"video"_s;
    QTest::newRow("chkTypePhoto") << u"picture"_s;
    QTest::newRow("chkTypeOthers") << u"other"_s;
}

void tst_scanOptionsDialog::readsEachTypeBox()
{
    QFETCH(const QString, key);
    ScanOptionsDialog dialog;
    checkAll(&dialog, typeBoxes, false);
    QCOMPARE(dialog.getOptions().fileTypes, QStringList());
    child(&dialog, QTest::currentDataTag())->setChecked(true);
    QCOMPARE(dialog.getOptions().fileTypes, QStringList(key));

    ScanOptionsDialog other;
    other.setOptions(dialog.getOptions());
    for (const char *name : typeBoxes)
        QCOMPARE(child(&other, name)->isChecked(), qstrcmp(name, QTest::currentDataTag()) == 0);
}

void tst_scanOptionsDialog::readsEachSkipBox()
{
    for (const char *name : skipBoxes) {
        ScanOptionsDialog dialog;
        checkAll(&dialog, skipBoxes, false);
        child(&dialog, name)->setChecked(true);
        const ScanOptions options = dialog.getOptions();
        QCOMPARE(options.skipSystem, name == skipBoxes[0]);
        QCOMPARE(options.skipApps, name == skipBoxes[1]);
        QCOMPARE(options.skipHiddenFolders, name == skipBoxes[2]);
        QCOMPARE(options.skipDesktop, name == skipBoxes[3]);

        ScanOptionsDialog other;
        other.setOptions(options);
        QCOMPARE(checks(&other), checks(&dialog));
    }
}

void tst_scanOptionsDialog::showsTheGivenOptions()
{
    ScanOptions options;
    // Keys are case-sensitive: "Video" matches no box.
    options.fileTypes = QStringList{u"other"_s, u"Video"_s, u"document"_s};
    options.minSize = 7;
    options.minUnit = u"MB"_s;
    options.maxSize = 1234;
    options.maxUnit = u"GB"_s;
    options.skipApps = true;
    ScanOptionsDialog dialog;
    dialog.setOptions(options);
    QCOMPARE(checks(&dialog), u"-x---x -x--"_s);
    const ScanOptions read = dialog.getOptions();
    QCOMPARE(read.fileTypes, (QStringList{u"document"_s, u"other"_s}));
    QCOMPARE(read.minSize, 7);
    QCOMPARE(read.minUnit, u"MB"_s);
    QCOMPARE(read.maxSize, 1234);
    QCOMPARE(read.maxUnit, u"GB"_s);
}

void tst_scanOptionsDialog::ignoresUnknownUnits()
{
    ScanOptionsDialog dialog;
    child<QComboBox>(&dialog, "comboMinUnit")->setCurrentText(u"MB"_s);
    child<QComboBox>(&dialog, "comboMaxUnit")->setCurrentText(u"GB"_s);
    ScanOptions options;
    options.maxUnit = u"G"_s;
    dialog.setOptions(options);
    QCOMPARE(dialog.getOptions().minUnit, u"MB"_s);
    QCOMPARE(dialog.getOptions().maxUnit, u"GB"_s);
}

void tst_scanOptionsDialog::acceptsAndRejectsByButton()
{
    ScanOptionsDialog dialog;
    dialog.setResult(-1);
    child<QPushButton>(&dialog, "btnOkScanOptions")->click();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    child<QPushButton>(&dialog, "btnCancelScanOptions")->click();
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
}

QTEST_MAIN(tst_scanOptionsDialog)
#include "tst_scanOptionsDialog.moc"
