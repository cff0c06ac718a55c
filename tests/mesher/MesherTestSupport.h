#pragma once
// Runs the external mesher on a script for the mesher tests; finds it like the host does.
#include "KwGmshMesh.h"
#include "KwSampleAssembly.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

// The mesher's path, or empty when it is not installed.
inline QString KwTestMesher()
{
    const QString program = KwMesherProgram();
    return program.contains(QLatin1Char('/')) ? program : QStandardPaths::findExecutable(program);
}

inline KwGmshMesh KwTestMeshScript(const QString& gmsh, const QString& script)
{
    KwGmshMesh failed;
    QTemporaryDir dir;
    QFile geo(dir.filePath(QStringLiteral("t.geo")));
    if (!geo.open(QIODevice::WriteOnly)) {
        failed.error = QStringLiteral("no script");
        return failed;
    }
    geo.write(script.toUtf8());
    geo.close();
    QProcess run;
    run.setProcessChannelMode(QProcess::MergedChannels);
    run.start(gmsh, KwMesherArguments(geo.fileName(), dir.filePath(QStringLiteral("t.msh"))));
    if (!run.waitForFinished(120000) || run.exitCode() != 0) {
        failed.error = QString::fromLocal8Bit(run.readAll()).right(500);
        return failed;
    }
    QFile msh(dir.filePath(QStringLiteral("t.msh")));
    if (!msh.open(QIODevice::ReadOnly)) {
        failed.error = QStringLiteral("no mesh file");
        return failed;
    }
    const QByteArray bytes = msh.readAll();
    return KwReadGmshMesh(std::string_view(bytes.constData(), std::size_t(bytes.size())));
}
