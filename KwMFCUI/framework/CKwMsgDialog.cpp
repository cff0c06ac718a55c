#include "CKwMsgDialog.h"

#include "KwLangText.h"
#include "KwStyle.h"
#include "ui_CKwMsgDialog.h"

CKwMsgDialog::CKwMsgDialog(const QList<int>& ids, QWidget* parent)
    : CKwMFCDialog(1150, nullptr, parent), m_ui(std::make_unique<Ui::CKwMsgDialog>()), m_ids(ids)
{
    m_ui->setupUi(this);
    connect(m_ui->ok, &QPushButton::clicked, this, &CKwMsgDialog::OnOK);
}

CKwMsgDialog::~CKwMsgDialog() = default;

bool CKwMsgDialog::OnInitDialog()
{
    m_ui->ids->clear();
    QStringList lines;
    lines.reserve(m_ids.size());
    for (int id : std::as_const(m_ids))
        lines << QString::asprintf("%d", id);
    m_ui->ids->addItems(lines);
    for (int i = 0; i < m_ui->ids->count(); ++i)
        m_ui->ids->item(i)->setTextAlignment(KwStyle::NumberAlignment);
    return CKwMFCDialog::OnInitDialog();
}

void CKwMsgDialog::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText("General", "LabelWarning", "Warning"));
    m_ui->label->setText(KwLabel(KwPropText("HighlightEntities", "InvalidEntityIDs",
                                            "The following entity IDs do not exist and were "
                                            "removed")));
    m_ui->ok->setText(KwPropText("General", "ButtonOk", "OK"));
}

QStringList CKwMsgDialog::GetListedIDs() const
{
    QStringList out;
    for (int i = 0; i < m_ui->ids->count(); ++i)
        out << m_ui->ids->item(i)->text();
    return out;
}
