#include "KwMessageBox.h"

#include "KwLangText.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>

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

namespace {

// Buttons speak the user's language like every other caption of the module.
void captionButtons(QMessageBox& box)
{
    const struct
    {
        QMessageBox::StandardButton button;
        const char* key;
        const char* english;
    } rows[] = {{QMessageBox::Ok, "ButtonOk", "OK"},
                {QMessageBox::Cancel, "ButtonCancel", "Cancel"},
                {QMessageBox::Yes, "ButtonYes", "Yes"},
                {QMessageBox::No, "ButtonNo", "No"},
                {QMessageBox::Abort, "ButtonAbort", "Abort"},
                {QMessageBox::Retry, "ButtonRetry", "Retry"},
                {QMessageBox::Ignore, "ButtonIgnore", "Ignore"}};
    for (const auto& r : rows)
        if (QAbstractButton* b = box.button(r.button))
            b->setText(KwPropText("General", r.key, r.english));
    // The caption is the product's name, not a text of any language.
    box.setProperty("kwDataTitle", true);
}

// Marks the message as the host's own words (nothing of the module's language).
void markHostText(QMessageBox& box)
{
    if (auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label")))
        label->setProperty("kwData", true);
}

} // namespace

void KwMarkHostText(QMessageBox& box) { markHostText(box); }

int KwMessageBoxW(QWidget* owner, const QString& text, const QString& caption, unsigned style,
                  bool hostText)
{
    QMessageBox box(KwStyleToIcon(style), caption, text, KwStyleToButtons(style), owner);
    box.setObjectName(QStringLiteral("KwMessageBox"));
    captionButtons(box);
    if (hostText)
        markHostText(box);
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

QString KwProductDisplayName() { return QStringLiteral("KwFEA Studio"); }

int KwAfxMessageBox(const QString& text, unsigned style, unsigned helpId, bool hostText)
{
    QMessageBox::Icon icon = KwStyleToIcon(style);
    unsigned s = style;
    if (icon == QMessageBox::NoIcon)
        s |= KwMB::ICONWARNING; // the host's default box shows an exclamation mark
    QWidget* owner = QApplication::activeWindow();
    QMessageBox box(KwStyleToIcon(s), KwProductDisplayName(), text,
                    KwStyleToButtons(s), owner);
    box.setObjectName(QStringLiteral("KwMessageBox"));
    box.setProperty("helpId", helpId);
    captionButtons(box);
    if (hostText)
        markHostText(box);
    box.exec();
    QAbstractButton* clicked = box.clickedButton();
    return clicked ? KwButtonToResult(box.standardButton(clicked)) : KwMB::IDCANCEL;
}
