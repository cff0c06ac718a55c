#include "CKwColorSwatch.h"

#include "KwCustomColors.h"

#include <QColorDialog>
#include <QPainter>

CKwColorSwatch::CKwColorSwatch(QWidget* parent) : QPushButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(40, 20);
    connect(this, &QPushButton::clicked, this, &CKwColorSwatch::ChooseColor);
}

void CKwColorSwatch::ChooseColor()
{
    const KwCustomColors custom = LoadCustomColors();
    for (int i = 0; i < 16; ++i)
        QColorDialog::setCustomColor(i, ToQColor(custom[static_cast<std::size_t>(i)]));
    QColorDialog dlg(ToQColor(m_color), this);
    dlg.setOption(QColorDialog::DontUseNativeDialog);
    const bool chosen = dlg.exec() == QDialog::Accepted;
    KwCustomColors keep;
    for (int i = 0; i < 16; ++i)
        keep[static_cast<std::size_t>(i)] = FromQColor(QColorDialog::customColor(i));
    SaveCustomColors(keep);
    if (!chosen)
        return;
    SetColor(FromQColor(dlg.selectedColor()));
    Q_EMIT colorChosen(m_color);
}

QColor CKwColorSwatch::ToQColor(unsigned c)
{
    return QColor(static_cast<int>(c & 0xFF), static_cast<int>((c >> 8) & 0xFF),
                  static_cast<int>((c >> 16) & 0xFF));
}

unsigned CKwColorSwatch::FromQColor(const QColor& color)
{
    return static_cast<unsigned>(color.red()) | (static_cast<unsigned>(color.green()) << 8) |
           (static_cast<unsigned>(color.blue()) << 16);
}

void CKwColorSwatch::SetColor(unsigned colorRef)
{
    m_color = colorRef & 0x00FFFFFFu;
    update();
}

void CKwColorSwatch::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    const QRect r = rect();
    p.fillRect(r, ToQColor(m_color));
    const QColor light = palette().color(QPalette::Light);
    const QColor shadow = palette().color(QPalette::Dark);
    p.setPen(light);
    p.drawLine(r.topLeft(), r.topRight());
    p.drawLine(r.topLeft(), r.bottomLeft());
    p.setPen(shadow);
    p.drawLine(r.bottomLeft(), r.bottomRight());
    p.drawLine(r.topRight(), r.bottomRight());
    if (hasFocus()) {
        p.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        p.drawRect(r.adjusted(2, 2, -3, -3));
    }
}
