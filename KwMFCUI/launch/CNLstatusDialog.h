#pragma once
// The nonlinear solution status window: a module-wide singleton that the host feeds with one
// progress line per solver step (subcase, increment, iteration, three progress positions and
// the step type). Rows: "Subcase", "Increment", "Iteration" show the first three values;
// the bars "Load", "Displacement" and the step row (increment or sub-increment) show the
// three positions. A thermal run renames the first bar row "Temperature". The counters and
// the bars stand in two blocks apart, so the counter "Increment" and the step bar's
// "Increment" never read as one row twice. The window keeps its own clock of the run.
#include "CKwMFCDialog.h"

#include <QElapsedTimer>
#include <QString>
#include <memory>

class QLabel;
class QProgressBar;
class QTimer;

namespace Ui {
class CNLstatusDialog;
}

// One progress line taken apart: at most 500 characters, fields separated by ",".
struct KwProgressLine
{
    QString values[3];  // fields 1-3, as they stand
    int positions[3] = {0, 0, 0}; // fields 4-6, read as integers (non-numeric: 0)
    QString stepType;   // field 8 ("F" increment, "S" sub-increment); field 7 is not used
};
KWMFCUI_EXPORT KwProgressLine KwParseProgressLine(const QString& text);

class KWMFCUI_EXPORT CNLstatusDialog : public CKwMFCDialog
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7341;
    static constexpr int kProgressLineMax = 500;

    explicit CNLstatusDialog(QWidget* parent = nullptr);
    ~CNLstatusDialog() override;

    void SetTextToCurrentLang() override;

    // Hides the window for good; the object stays until the host deletes it and keeps taking
    // calls (values, title, flags), only without showing itself again.
    void DestroyStatusWindow();
    bool IsStatusWindowDestroyed() const { return m_bWindowDestroyed; }

    // Back to the state before a run: values "1", bars 0. Only a running window is reset.
    void ResetStatus();
    // 1 shows and raises the window, anything else hides it; nothing when already so.
    void ShowStatus(int value);
    // A name for the run (the analysis); the caption shows it beside the title.
    void SetTitleString(const QString& title);
    QString GetTitleString() const { return m_strTitle; }
    // One progress line. `titleSet` is the module's record, shared by both status windows,
    // that the first line since the last reset has been shown; it is set here.
    void ProgressLine(const QString& text, bool& titleSet);
    // Thermal runs: the first bar row is the temperature.
    void SetTemperatureLabel();

    bool IsRunning() const { return m_bRunning; }

    // Time since the first progress line of the run, as "h:mm:ss" (hours go on past 99).
    static QString ElapsedText(qint64 milliseconds);
    bool IsStatusVisible() const { return m_bVisible; }

protected:
    CNLstatusDialog(unsigned templateId, QWidget* parent);
    virtual QString StatusTitle() const;
    bool OnInitDialog() override;
    void reject() override;
    void closeEvent(QCloseEvent* event) override;

private:
    void applyStepLabel();
    void showAndRaise();
    void keepOnTop();
    void showElapsed();
    void fitValueBoxes();

    std::unique_ptr<Ui::CNLstatusDialog> m_ui;
    QLabel* m_values[3] = {};
    QProgressBar* m_bars[3] = {};
    QString m_strTitle;
    QChar m_stepType;          // 'F' or 'S' once a line named it
    bool m_bTemperature = false;
    bool m_bRunning = false;
    bool m_bVisible = false;
    bool m_bWindowDestroyed = false;
    QElapsedTimer m_raised;
    QLabel* m_elapsed = nullptr;
    QElapsedTimer m_clock; // runs from the first line of a run to the reset
    QTimer* m_tick = nullptr;
};
