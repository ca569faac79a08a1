// The pages are drawn off screen: no display is needed.
#include "pages/PageClasses.h"

#include <QApplication>

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int qtArgc = 1;
    QApplication application(qtArgc, argv);
    registerAmpwellPages();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
