// The entry every benchmark program shares: a headless application (unless the caller picked a
// platform), a settings file of its own so that no run touches the user's, then the benchmarks.
#include "KwRegistry.h"

#include <QApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTemporaryDir settings;
    KwSetRegistryFile(settings.filePath(QStringLiteral("bench.ini")));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
