#pragma once
// A button that shows a colour: the stored colour fills it, a three-dimensional frame (light
// top and left, shadow bottom and right) surrounds it. Colours are 0x00BBGGRR values.
#include "KwMFCUIExport.h"

#include <QColor>
#include <QPushButton>

class KWMFCUI_EXPORT CKwColorSwatch : public QPushButton
{
    Q_OBJECT
public:
    explicit CKwColorSwatch(QWidget* parent = nullptr);
    unsigned GetColor() const { return m_color; }
    void SetColor(unsigned colorRef);

    static QColor ToQColor(unsigned colorRef);
    static unsigned FromQColor(const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    unsigned m_color = 0x00FF0000;
};
