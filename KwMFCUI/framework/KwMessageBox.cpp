#include "KwMessageBox.h"

#include "CKwMFCUIApp.h"

#include <QApplication>

QMessageBox::Icon KwStyleToIcon(unsigned style)
{
    switch (style & 0xF0) {
    case KwMB::ICONERROR: return QMessageBox::Critical;
    case KwMB::ICONQUESTION: return QMessageBox::Question;
    case KwMB::ICONWARNING: return QMessageBox::Warning;
    case KwMB::ICONINFORMATION: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
    }
}

QMessageBox::StandardButtons KwStyleToButtons(unsigned style)
{
    switch (style & 0x0F) {
    case KwMB::OKCANCEL: return QMessageBox::Ok | QMessageBox::Cancel;
    case KwMB::ABORTRETRYIGNORE: return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    case KwMB::YESNOCANCEL: return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case KwMB::YESNO: return QMessageBox::Yes | QMessageBox::No;
    case KwMB::RETRYCANCEL: return QMessageBox::Retry | QMessageBox::Cancel;
    default: return QMessageBox::Ok;
    }
}

int KwButtonToResult(QMessageBox::StandardButton button)
{
    switch (button) {
    case QMessageBox::Ok: return KwMB::IDOK;
    case QMessageBox::Cancel: return KwMB::IDCANCEL;
    case QMessageBox::Abort: return KwMB::IDABORT;
    case QMessageBox::Retry: return KwMB::IDRETRY;
    case QMessageBox::Ignore: return KwMB::IDIGNORE;
    case QMessageBox::Yes: return KwMB::IDYES;
    case QMessageBox::No: return KwMB::IDNO;
    case QMessageBox::Close: return KwMB::IDCLOSE;
    default: return KwMB::IDCANCEL;
    }
}

int KwMessageBoxW(QWidget* owner, const QString& text, const QString& caption, unsigned style)
{
    QMessageBox box(KwStyleToIcon(style), caption, text, KwStyleToButtons(style), owner);
    box.setObjectName(QStringLiteral("KwMessageBox"));
    const auto buttons = KwStyleToButtons(style);
    // Escape answers as closing the box would: Cancel or No where offered, else the only OK.
    if (buttons.testFlag(QMessageBox::Cancel))
        box.setEscapeButton(QMessageBox::Cancel);
    else if (buttons.testFlag(QMessageBox::No))
        box.setEscapeButton(QMessageBox::No);
    else if (buttons == QMessageBox::Ok)
        box.setEscapeButton(QMessageBox::Ok);
    box.exec();
    QAbstractButton* clicked = box.clickedButton();
    if (!clicked)
        return KwMB::IDCANCEL;
    return KwButtonToResult(box.standardButton(clicked));
}

int KwAfxMessageBox(const QString& text, unsigned style, unsigned helpId)
{
    QMessageBox::Icon icon = KwStyleToIcon(style);
    unsigned s = style;
    if (icon == QMessageBox::NoIcon)
        s |= KwMB::ICONWARNING; // the host's default box shows an exclamation mark
    QWidget* owner = QApplication::activeWindow();
    QMessageBox box(KwStyleToIcon(s), CKwMFCUIApp::ProductDisplayName(), text,
                    KwStyleToButtons(s), owner);
    box.setObjectName(QStringLiteral("KwMessageBox"));
    box.setProperty("helpId", helpId);
    box.exec();
    QAbstractButton* clicked = box.clickedButton();
    return clicked ? KwButtonToResult(box.standardButton(clicked)) : KwMB::IDCANCEL;
}
