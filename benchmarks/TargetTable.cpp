#include "benchmarks/TargetTable.h"

#include <algorithm>
#include <cstdio>
#include <ostream>

namespace krv::benchmarks {
namespace {

std::string Fixed(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", value < 0.1 ? 4 : value < 100 ? 2 : 0, value);
    return text;
}

std::string AimText(Aim aim, double target) {
    return (aim == Aim::AtLeast ? "at least " : "at most ") + Fixed(target);
}

const char* Verdict(Aim aim, double target, double measured) {
    return (aim == Aim::AtLeast ? measured >= target : measured <= target) ? "yes" : "NO";
}

}  // namespace

Spread Spread::Of(std::vector<double> values) {
    std::ranges::sort(values);
    return {values[values.size() / 2], values.front(), values.back()};
}

TargetTable& TargetTable::Shared() {
    static TargetTable table;
    return table;
}

void TargetTable::Add(const std::string& what, Aim aim, double target, const Spread& measured,
                      const std::string& note) {
    m_rows.push_back({what, aim, target, measured, note});
}

void TargetTable::Print(std::ostream& out) const {
    out << "| what | target | median | lowest to highest | met | remarks |\n"
           "|---|---|---|---|---|---|\n";
    for (const Row& row : m_rows) {
        out << "| " << row.what << " | " << AimText(row.aim, row.target) << " | "
            << Fixed(row.measured.median) << " | " << Fixed(row.measured.lowest) << " to "
            << Fixed(row.measured.highest) << " | "
            << Verdict(row.aim, row.target, row.measured.median) << " | " << row.note << " |\n";
    }
}

std::string TimeText(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, seconds < 1 ? "%.1f ms" : "%.2f s",
                  seconds < 1 ? seconds * 1000 : seconds);
    return text;
}

}  // namespace krv::benchmarks
