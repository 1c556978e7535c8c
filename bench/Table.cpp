#include "Table.h"

namespace brenvale::bench {

void Table::heading(const char* text) const {
    std::fprintf(stream_, "\n%s\n", text);
    std::fflush(stream_);
}

void Table::row(const char* what, double value, const char* unit, std::optional<double> limit) const {
    const int decimals = value < 10 ? 3 : 1;
    std::fprintf(stream_, "  %-52s %12.*f %-8s", what, decimals, value, unit);
    if (limit) {
        std::fprintf(stream_, " %7.2f x", value / *limit);
    }
    std::fputc('\n', stream_);
    std::fflush(stream_);
}

} // namespace brenvale::bench
