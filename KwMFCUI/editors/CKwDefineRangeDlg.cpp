#include "CKwDefineRangeDlg.h"

#include "CKwUIHighlightNodeElem.h"
#include "KwLangText.h"
#include "ui_CKwDefineRangeDlg.h"

CKwDefineRangeDlg::CKwDefineRangeDlg(QWidget* parent)
    : CKwMFCDialog(kTemplateId, nullptr, parent), m_ui(std::make_unique<Ui::CKwDefineRangeDlg>())
{
    m_ui->setupUi(this);
    m_ui->step->setText(QStringLiteral("1"));
    // The message line takes room only when there is something to say.
    m_ui->message->hide();
    connect(m_ui->ok, &QPushButton::clicked, this, &CKwDefineRangeDlg::OnOK);
    connect(m_ui->cancel, &QPushButton::clicked, this, &CKwDefineRangeDlg::OnCancel);
}

CKwDefineRangeDlg::~CKwDefineRangeDlg() = default;

void CKwDefineRangeDlg::SetFields(const QString& from, const QString& to, const QString& step)
{
    m_ui->from->setText(from);
    m_ui->to->setText(to);
    m_ui->step->setText(step);
}

QString CKwDefineRangeDlg::GetMessage() const { return m_ui->message->text(); }

void CKwDefineRangeDlg::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText("HighlightEntities", "TitleDefineRange", "Define Range"));
    m_ui->labelFrom->setText(KwLabel(KwPropText("HighlightEntities", "LabelFrom", "From")));
    m_ui->labelTo->setText(KwLabel(KwPropText("HighlightEntities", "LabelTo", "To")));
    m_ui->labelStep->setText(KwLabel(KwPropText("HighlightEntities", "LabelStep", "Step")));
    m_ui->ok->setText(KwPropText("General", "ButtonOk", "OK"));
    m_ui->cancel->setText(KwPropText("General", "ButtonCancel", "Cancel"));
}

void CKwDefineRangeDlg::OnOK()
{
    // The three fields read as one list item, so the range meets the list's own rules and
    // messages; an empty step is a step of 1.
    const QString step = m_ui->step->text().trimmed();
    const QString item = QStringLiteral("%1-%2 by %3")
                             .arg(m_ui->from->text().trimmed(), m_ui->to->text().trimmed(),
                                  step.isEmpty() ? QStringLiteral("1") : step);
    const KwIdRanges::Parsed parsed = KwIdRanges::Parse(item);
    if (parsed.status != KwIdRanges::Ok || parsed.ranges.size() != 1) {
        KwIdRanges::Parsed shown = parsed;
        if (shown.status == KwIdRanges::Ok) // a comma inside a field splits the item
            shown = KwIdRanges::Parsed{KwIdRanges::BadText, false, {}, 0, item};
        m_ui->message->setText(CKwUIHighlightNodeElem::ListMessage(shown));
        m_ui->message->show();
        return;
    }
    m_ui->message->clear();
    m_ui->message->hide();
    m_range = parsed.ranges.front();
    CKwMFCDialog::OnOK();
}
