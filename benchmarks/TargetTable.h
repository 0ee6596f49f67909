// TargetTable: what was aimed at and what was measured, as a table in Markdown.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace krv::benchmarks {

struct Spread {
    double median = 0;
    double lowest = 0;
    double highest = 0;

    // Of at least one value.
    [[nodiscard]] static Spread Of(std::vector<double> values);
};

enum class Aim { AtLeast, AtMost };

class TargetTable {
 public:
    // The one that benchmarks report to and the program prints at its end.
    static TargetTable& Shared();

    // `note` says what the figure means, e.g. the times behind it.
    void Add(const std::string& what, Aim aim, double target, const Spread& measured,
             const std::string& note = {});

    void Print(std::ostream& out) const;

 private:
    struct Row {
        std::string what;
        Aim aim;
        double target;
        Spread measured;
        std::string note;
    };
    std::vector<Row> m_rows;
};

// "12.3 ms", "1.24 s": for notes.
[[nodiscard]] std::string TimeText(double seconds);

}  // namespace krv::benchmarks
