// SPDX-License-Identifier: BSD-3-Clause
// Measures the effect beside other renderers of text. Takes the options of Google Benchmark, and
//   --sheets=FOLDER   measure nothing; write pictures of what each renderer draws
#include <string>
#include <string_view>

#include <QGuiApplication>
#include <benchmark/benchmark.h>

#include "Measurements.h"
#include "Sheets.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);

    constexpr std::string_view kSheets = "--sheets=";
    if (argc == 2 && std::string_view(argv[1]).starts_with(kSheets))
        return bench::WriteSheets(argv[1] + kSheets.size()) ? 0 : 1;

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    bench::RegisterRenderers();
    bench::RegisterFrameSizes();
    bench::RegisterAreas();
    bench::RegisterThreads();
    bench::RegisterCaches();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
