#pragma once
// The demo host's mesher: remeshes the sample assembly when the view asks for it (the mesh
// settings' Run). Writes the geometry script with the mesh's settings and the model's mesh
// controls into a temporary folder, runs the mesher as a separate program, reports its progress
// from the mesher's own output lines, and only when the run succeeded and its file reads
// replaces the model's mesh. A missing or failing mesher, a cancelled run, an unreadable file,
// or an editor or the solver that took the model meanwhile leave the previous mesh untouched
// and say why.
#include <QObject>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <memory>

class CFMView;

class KwMesherJob : public QObject
{
    Q_OBJECT
public:
    explicit KwMesherJob(CFMView* view, QObject* parent = nullptr);
    ~KwMesherJob() override;

    // The mesher program; KwMesherProgram() unless set.
    void SetProgram(const QString& program) { m_program = program; }
    QString Program() const;

    // Starts a remesh of the view's model; false (Message() says why) when it cannot start.
    bool Start();
    // Ends a run: the mesher is killed and the previous mesh stays.
    void Cancel();
    bool IsRunning() const { return m_running; }
    // Runs the event loop until the run ends or `msecs` pass; true when it ended.
    bool Wait(int msecs);
    bool Succeeded() const { return m_succeeded; }
    QString Message() const { return m_message; }
    int Progress() const { return m_progress; }
    // Why the mesh may not be replaced now (an open editor other than the mesh settings, a
    // running solver), or an empty string.
    QString Obstacle() const;

Q_SIGNALS:
    void progressChanged(int percent, const QString& line);
    void finished(bool succeeded);

private:
    void readOutput();
    void onFinished(int exitCode, QProcess::ExitStatus status);
    void end(bool succeeded, const QString& message);

    CFMView* m_view;
    QString m_program;
    QProcess m_process;
    std::unique_ptr<QTemporaryDir> m_dir;
    QByteArray m_pending;
    QString m_output;
    bool m_running = false;
    bool m_cancelled = false;
    bool m_succeeded = false;
    int m_progress = 0;
    int m_phase = 1;
    QString m_message;
};
