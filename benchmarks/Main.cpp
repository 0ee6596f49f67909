// Runs the benchmarks and prints the table of targets at the end; arguments are Google Benchmark's.
#include <benchmark/benchmark.h>

#include <iostream>

#include "benchmarks/Machine.h"
#include "benchmarks/TargetTable.h"

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    std::cout << "\n## Machine\n\n";
    krv::benchmarks::DescribeMachine(std::cout);
    std::cout << "\n## Targets\n\n";
    krv::benchmarks::TargetTable::Shared().Print(std::cout);
    return 0;
}
