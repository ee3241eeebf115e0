// Window layer: a dialog.

#include "scan/ScanOptionsDialog.h"

#include "app/CaptionFit.h"
#include "ui_ScanOptionsDialog.h"

#include <QDebug>

#include <array>
#include <utility>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// The check boxes of the file types with their category keys, in the order of getOptions().
std::array<std::pair<QCheckBox *, QString>, 6> typeBoxes(const Ui::ScanOptionsDialog &ui)
{
    return {{
        {ui.chkTypeArchive, u"archive"_s},
        {ui.chkTypeDoc, u"document"_s},
        {ui.chkTypeAudio, u"audio"_s},
        {ui.chkTypeVideo, u"video"_s},
        {ui.chkTypePhoto, u"picture"_s},
        {ui.chkTypeOthers, u"other"_s},
    }};
}

} // namespace

ScanOptionsDialog::ScanOptionsDialog(QWidget *parent)
    : QDialog(parent)
    , ui(new Ui::ScanOptionsDialog)
{
    ui->setupUi(this);
    setFixedHeight(490);
    setFixedWidth(793);
    connect(ui->btnOkScanOptions, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui->btnCancelScanOptions, &QPushButton::clicked, this, &QDialog::reject);

    for (const auto &[box, key] : typeBoxes(*ui))
        box->setChecked(true);
    for (QCheckBox *box : {ui->chkSkipSystem, ui->chkSkipApps, ui->chkSkipHiddenFolder, ui->chkSkipDesktop})
        box->setChecked(true);
    // Kept deliberately: no item is called "K", so both boxes show their first unit, "KB".
    ui->spinMinSize->setValue(0);
    ui->comboMinUnit->setCurrentText(u"K"_s);
    ui->spinMaxSize->setValue(0);
    ui->comboMaxUnit->setCurrentText(u"K"_s);
    fitCaptions();
    qDebug() << "chkSkipSystem checked:" << ui->chkSkipSystem->isChecked();
}

void ScanOptionsDialog::fitCaptions()
{
    fitRow({ui->label});
    fitRow({ui->chkTypeArchive, ui->chkTypeDoc, ui->chkTypeAudio, ui->chkTypeVideo, ui->chkTypePhoto,
        ui->chkTypeOthers});
    fitRow({ui->label_3, ui->label_4});
    fitRow({ui->comboMinUnit, ui->comboMaxUnit});
    fitRow({ui->label_5});
    fitRow({ui->chkSkipSystem, ui->chkSkipApps, ui->chkSkipHiddenFolder, ui->chkSkipDesktop});
}

ScanOptionsDialog::~ScanOptionsDialog()
{
    delete ui;
}

ScanOptions ScanOptionsDialog::getOptions() const
{
    ScanOptions options;
    for (const auto &[box, key] : typeBoxes(*ui)) {
        if (box->isChecked())
            options.fileTypes.append(key);
    }
    options.minSize = ui->spinMinSize->value();
    options.minUnit = ui->comboMinUnit->currentText();
    options.maxSize = ui->spinMaxSize->value();
    options.maxUnit = ui->comboMaxUnit->currentText();
    options.skipSystem = ui->chkSkipSystem->isChecked();
    options.skipApps = ui->chkSkipApps->isChecked();
    options.skipHiddenFolders = ui->chkSkipHiddenFolder->isChecked();
    options.skipDesktop = ui->chkSkipDesktop->isChecked();
    return options;
}

void ScanOptionsDialog::setOptions(const ScanOptions &options)
{
    for (const auto &[box, key] : typeBoxes(*ui))
        box->setChecked(options.fileTypes.contains(key));
    ui->spinMinSize->setValue(options.minSize);
    ui->comboMinUnit->setCurrentText(options.minUnit);
    ui->spinMaxSize->setValue(options.maxSize);
    ui->comboMaxUnit->setCurrentText(options.maxUnit);
    ui->chkSkipSystem->setChecked(options.skipSystem);
    ui->chkSkipApps->setChecked(options.skipApps);
    ui->chkSkipHiddenFolder->setChecked(options.skipHiddenFolders);
    ui->chkSkipDesktop->setChecked(options.skipDesktop);
}
