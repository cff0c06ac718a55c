#include "CKwAboutDlg.h"

#include "KwLangText.h"
#include "KwMessageBox.h"
#include "ui_CKwAboutDlg.h"

#include <QIcon>

#ifndef KWMFCUI_VERSION
#define KWMFCUI_VERSION "0.0.0"
#endif

CKwAboutDlg::CKwAboutDlg(QWidget* parent)
    : CKwMFCDialog(0, nullptr, parent), m_ui(std::make_unique<Ui::CKwAboutDlg>())
{
    m_ui->setupUi(this);
    m_ui->icon->setPixmap(QIcon(QStringLiteral(":/kwmfcui/icons/product.svg")).pixmap(64, 64));
    connect(m_ui->ok, &QPushButton::clicked, this, &CKwMFCDialog::OnOK);
}

CKwAboutDlg::~CKwAboutDlg() = default;

QString CKwAboutDlg::BuildText()
{
    return QStringLiteral("%1 %2").arg(QStringLiteral(__DATE__), QStringLiteral(__TIME__));
}

void CKwAboutDlg::SetTextToCurrentLang()
{
    const QString product = KwProductDisplayName();
    setWindowTitle(KwPropText("AboutDlg", "Title", "About") + QLatin1Char(' ') + product);
    m_ui->product->setText(QStringLiteral("<b>%1</b>").arg(product.toHtmlEscaped()));
    m_ui->versionLabel->setText(KwLabel(KwPropText("AboutDlg", "LabelVersion", "Version")));
    m_ui->version->setText(QStringLiteral(KWMFCUI_VERSION));
    m_ui->buildLabel->setText(KwLabel(KwPropText("AboutDlg", "LabelBuild", "Build")));
    m_ui->build->setText(BuildText());
    m_ui->qtLabel->setText(KwLabel(KwPropText("AboutDlg", "LabelQtVersion", "Qt version")));
    m_ui->qt->setText(QString::fromLatin1(qVersion()));
    m_ui->licence->setText(KwPropText(
        "AboutDlg", "LicenceNotice",
        "This program is licensed to you under the terms of your licence agreement. It is "
        "provided without warranty of any kind. The Qt libraries are used under the GNU Lesser "
        "General Public License version 3."));
    m_ui->ok->setText(KwPropText("General", "ButtonOk", "OK"));
}
