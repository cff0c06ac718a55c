#include "CKwColorSwatch.h"

#include "KwCustomColors.h"
#include "KwLangText.h"
#include "KwStyle.h"

#include <QColorDialog>
#include <QEvent>
#include <QStyleOptionButton>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <algorithm>

CKwColorSwatch::CKwColorSwatch(QWidget* parent) : QPushButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(40, 20);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setToolTip(ColorName(m_color));
    connect(this, &QPushButton::clicked, this, &CKwColorSwatch::ChooseColor);
}

QSize CKwColorSwatch::sizeHint() const
{
    return {std::max(minimumWidth(), KwStyle::CharsWidth(fontMetrics(), KwStyle::SwatchChars)),
            std::max(minimumHeight(), QPushButton::sizeHint().height())};
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
    setToolTip(ColorName(m_color));
    update();
}

void CKwColorSwatch::paintEvent(QPaintEvent*)
{
    QStylePainter p(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    option.icon = QIcon();
    p.drawControl(QStyle::CE_PushButtonBevel, option);
    // The patch: the colour inside a dark line, clear of the button's bevel.
    const int inset = style()->pixelMetric(QStyle::PM_ButtonMargin, &option, this) / 2 + 3;
    const QRect patch = rect().adjusted(inset, inset, -inset - 1, -inset - 1);
    p.fillRect(patch, ToQColor(m_color));
    p.setPen(palette().color(QPalette::Shadow));
    p.drawRect(patch);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = rect().adjusted(2, 2, -2, -2);
        p.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

bool CKwColorSwatch::event(QEvent* e)
{
    if (e->type() == QEvent::ToolTip)
        setToolTip(ColorName(m_color));
    return QPushButton::event(e);
}

QString CKwColorSwatch::ColorName(unsigned colorRef)
{
    struct Named
    {
        unsigned rgb; // 0xRRGGBB
        const char* key;
        const char* english;
    };
    static const Named kNames[] = {
        {0x000000, "Black", "Black"},         {0xFFFFFF, "White", "White"},
        {0xFF0000, "Red", "Red"},             {0x00FF00, "Green", "Green"},
        {0x0000FF, "Blue", "Blue"},           {0xFFFF00, "Yellow", "Yellow"},
        {0x00FFFF, "Cyan", "Cyan"},           {0xFF00FF, "Magenta", "Magenta"},
        {0x808080, "Gray", "Gray"},           {0xC0C0C0, "Silver", "Silver"},
        {0x800000, "DarkRed", "Dark Red"},    {0x008000, "DarkGreen", "Dark Green"},
        {0x000080, "DarkBlue", "Dark Blue"},  {0x808000, "Olive", "Olive"},
        {0x800080, "Purple", "Purple"},       {0x008080, "Teal", "Teal"},
        {0xFF8000, "Orange", "Orange"},
    };
    const QColor c = ToQColor(colorRef);
    const unsigned rgb = c.rgb() & 0x00FFFFFFu;
    for (const Named& n : kNames)
        if (n.rgb == rgb)
            return KwPropText("Colors", n.key, n.english);
    return c.name(QColor::HexRgb).toUpper();
}
