#pragma once

#include <cstdio>
#include <optional>

namespace brenvale::bench {

/// A table of figures on a stream of its own. Each line is there as soon as it is known.
class Table {
public:
    explicit Table(std::FILE* stream) : stream_(stream) {}

    void heading(const char* text) const;

    /// `limit` is the figure that the machine itself reaches; the row then shows the value as its multiple.
    void row(const char* what, double value, const char* unit, std::optional<double> limit = {}) const;

private:
    std::FILE* stream_;
};

} // namespace brenvale::bench
