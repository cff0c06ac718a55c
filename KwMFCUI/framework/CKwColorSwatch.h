#pragma once
// A button that shows a colour: a push button whose face holds a framed patch of the stored
// colour, with the colour's name as its tool tip. A click opens the colour chooser seeded with
// the stored colour and the user's custom colours, which are kept for the next use.
// Colours are 0x00BBGGRR values.
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
    // The colour's name in the current language for the colours that have one (black, red,
    // dark blue, ...), else its "#RRGGBB" code.
    static QString ColorName(unsigned colorRef);

    // Runs the colour chooser (modal). A chosen colour is stored and reported; the custom
    // colours are saved whether or not one was chosen.
    void ChooseColor();

Q_SIGNALS:
    // The user chose a colour in the chooser.
    void colorChosen(unsigned colorRef);

public:
    // A swatch is as wide as a few characters, whatever room its column has.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    // The tool tip is named again when it shows, so that it follows a change of language.
    bool event(QEvent* event) override;

private:
    unsigned m_color = 0x00FF0000;
};
