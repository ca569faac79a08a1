#pragma once

#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

// Pass and fail counts of a conformance run by area (the suite's first folder), the files and
// tests left out with their reasons, and the failures; printed in the layout of the Node runner
// (scripts/conformance/report.mjs) so that both runs read alike.
class ConformanceTally {
public:
    explicit ConformanceTally(std::string engine) : engine_(std::move(engine)) {}

    // `results` is the harness's output for one file: "PASS\tname", "FAIL\tname\tmessage",
    // "SKIP\treason" (the whole file) or "SKIP\tname\treason" (one test).
    void add(const std::string& file, std::string_view results);

    int passed() const;
    int failed() const;
    double passRate() const; // percent of counted tests, 0 when none counted

    void print(std::ostream& out) const;
    void writeFailures(std::ostream& out) const;

private:
    struct Counts {
        int pass = 0, fail = 0;
    };
    struct Failure {
        std::string file, name, message;
    };
    std::string engine_;
    std::map<std::string, Counts> areas_;
    std::map<std::string, int> skippedFiles_, skippedTests_;
    std::vector<Failure> failures_;
};
