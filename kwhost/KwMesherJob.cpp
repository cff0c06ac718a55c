#include "KwMesherJob.h"

#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMeshModel.h"
#include "KwHostText.h"
#include "KwSampleAssembly.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

namespace {
// The mesh settings dialog asks for the remesh and may stay open while it runs.
constexpr unsigned kMeshSettingsTemplate = 7201;
}

KwMesherJob::KwMesherJob(CFMView* view, QObject* parent) : QObject(parent), m_view(view)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&m_process, &QProcess::readyRead, this, &KwMesherJob::readOutput);
    connect(&m_process, &QProcess::finished, this, &KwMesherJob::onFinished);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError e) {
        if (e == QProcess::FailedToStart && m_running)
            end(false, KwHostText("MesherMissing",
                                  "The mesher (%1) could not be started: %2. Install gmsh or "
                                  "name the program in KW_GMSH. The previous mesh is kept.")
                           .arg(Program(), m_process.errorString()));
    });
}

KwMesherJob::~KwMesherJob()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(2000);
    }
}

QString KwMesherJob::Program() const
{
    return m_program.isEmpty() ? KwMesherProgram() : m_program;
}

QString KwMesherJob::Obstacle() const
{
    if (!m_view || !m_view->GetModel())
        return KwHostText("MesherNoModel", "There is no model to mesh.");
    if (m_view->IsSolvraRunning())
        return KwHostText("MesherSolverRuns", "The mesh cannot be replaced while the solver runs.");
    for (QWidget* w : m_view->GetOpenDialogs())
        if (w && w->property("templateId").toUInt() != kMeshSettingsTemplate)
            return KwHostText("MesherEditorOpen",
                              "The mesh cannot be replaced while \"%1\" is open: close it first.")
                .arg(w->windowTitle());
    return QString();
}

bool KwMesherJob::Start()
{
    m_succeeded = false;
    if (m_running) {
        m_message = KwHostText("MesherRunning", "The mesher is already running.");
        return false;
    }
    if (const QString why = Obstacle(); !why.isEmpty()) {
        m_message = why;
        return false;
    }
    m_dir = std::make_unique<QTemporaryDir>();
    const QString script = m_dir->filePath(QStringLiteral("assembly.geo"));
    QFile geo(script);
    const CKwFEModel* model = m_view->GetModel();
    const KwMeshSettings settings = model->m_mesh ? model->m_mesh->GetSettings() : KwMeshSettings();
    if (!m_dir->isValid() || !geo.open(QIODevice::WriteOnly)
        || geo.write(KwAssemblyGeometry(settings, model).toUtf8()) < 0) {
        m_message = KwHostText("MesherNoFolder", "The mesher's files could not be written.");
        return false;
    }
    geo.close();
    m_pending.clear();
    m_output.clear();
    m_cancelled = false;
    m_progress = 0;
    m_phase = 1;
    m_running = true;
    m_message.clear();
    m_process.start(Program(), KwMesherArguments(script, m_dir->filePath(QStringLiteral("assembly.msh"))));
    return m_running || m_succeeded;
}

void KwMesherJob::Cancel()
{
    if (!m_running)
        return;
    m_cancelled = true;
    m_process.kill();
}

bool KwMesherJob::Wait(int msecs)
{
    QElapsedTimer clock;
    clock.start();
    while (m_running && clock.elapsed() < msecs) {
        QEventLoop loop;
        connect(this, &KwMesherJob::finished, &loop, &QEventLoop::quit);
        QTimer::singleShot(50, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return !m_running;
}

void KwMesherJob::readOutput()
{
    m_pending += m_process.readAll();
    // What a failure is explained from: the first lines and every error line.
    qsizetype nl;
    while ((nl = m_pending.indexOf('\n')) >= 0) {
        const QString line = QString::fromLocal8Bit(m_pending.left(nl)).trimmed();
        m_pending.remove(0, nl + 1);
        if (line.startsWith(QLatin1String("Error")) || m_output.size() < 200000)
            m_output += line + QLatin1Char('\n');
        const int p = KwMesherProgress(line, m_phase);
        if (p > m_progress) {
            m_progress = p;
            Q_EMIT progressChanged(p, line);
        }
    }
}

void KwMesherJob::onFinished(int exitCode, QProcess::ExitStatus status)
{
    if (!m_running)
        return;
    readOutput();
    if (m_cancelled) {
        end(false, KwHostText("MesherCancelled", "Meshing was cancelled. The previous mesh is kept."));
        return;
    }
    const QString error = KwMesherError(m_output);
    if (status != QProcess::NormalExit || exitCode != 0 || !error.isEmpty()) {
        end(false, KwHostText("MesherFailed", "The mesher failed: %1. The previous mesh is kept.")
                       .arg(error.isEmpty() ? KwHostText("MesherExitCode", "it ended with code %1")
                                                  .arg(exitCode)
                                            : error));
        return;
    }
    QFile file(m_dir->filePath(QStringLiteral("assembly.msh")));
    if (!file.open(QIODevice::ReadOnly)) {
        end(false, KwHostText("MesherNoFile", "The mesher wrote no mesh. The previous mesh is kept."));
        return;
    }
    const QByteArray bytes = file.readAll();
    const KwGmshMesh read = KwReadGmshMesh(std::string_view(bytes.constData(), std::size_t(bytes.size())));
    if (!read.ok() || read.mesh.ElementCount() == 0) {
        end(false, KwHostText("MesherBadFile",
                              "The mesher's file cannot be read (%1). The previous mesh is kept.")
                       .arg(read.ok() ? KwHostText("MesherNoElements", "it holds no element")
                                      : read.error));
        return;
    }
    // The model may have been taken meanwhile.
    if (const QString why = Obstacle(); !why.isEmpty()) {
        end(false, why + QLatin1Char(' ')
                       + KwHostText("MesherKept", "The previous mesh is kept."));
        return;
    }
    CKwFEModel* model = m_view->GetModel();
    const KwMeshSettings settings = model->m_mesh ? model->m_mesh->GetSettings() : KwMeshSettings();
    KwPutMesh(*model, read, settings);
    m_view->NotifyMeshReplaced();
    m_view->ReDraw();
    end(true, KwHostText("MesherDone", "Mesh: %1 elements, %2 nodes.")
                  .arg(model->m_mesh->ElementCount())
                  .arg(model->m_mesh->Nodes().size()));
}

void KwMesherJob::end(bool succeeded, const QString& message)
{
    m_running = false;
    m_succeeded = succeeded;
    m_message = message;
    if (succeeded) {
        m_progress = 100;
        Q_EMIT progressChanged(100, QString());
    }
    Q_EMIT finished(succeeded);
}
