#include "tests/switch/chip/features.h"

#include <sstream>
#include <stdexcept>

namespace
{

constexpr const char *COLUMNS =
    "bit|layout|FDV|dot1q|disc|egm|add|core|dprio|p123|p0|er|bc|mir|phyd|link|dupspd|mfs|div0|dive|"
    "vst|r8|gset|pset|x60|x7e";

// clang-format off
constexpr const char *ROWS[] = {
    "A0|o|-|-|-|y|-|-|2b|-|-|-|-|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "A1|o|-|-|-|y|y|-|2b|-|-|-|-|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "A2|o|y|6|-|y|y|-|2b|-|-|-|-|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "A3|o|-|-|-|-|-|-|-|-|-|-|-|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "A4|o|y|6|-|y|y|-|2b|10|v10|v10|10|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "A5|o|-|-|-|-|-|-|-|-|-|-|-|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "A6|o|-|-|-|y|y|-|2b|10|v10|v10|10|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "A7|o|y|6|-|y|y|-|2b|10|v10|v10|10|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "A8|o|y|6|-|y|y|-|2b|10|v10|v10|10|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "A9|N|-|-|-|y|y|-|3b|10|v10|d10|9+10|-|y|11|n|y|-|32up|-|-|-|-|-|-",
    "A10|N|y|8|-|y|y|-|3b|9|d9|d10|9+10|-|y|11|n|y|28dn|28dn|-|-|-|y|-|-",
    "A11|N|y|8|y|y|y|y|3b|9|d9|d10|9+10|y|y|11|n|y|32up|32up|-|-|-|y|-|-",
    "A12|N|y|8|y|y|-|y|3b|9|d9|-|9+10|y|y|11|n|y|32up|-|-|-|y|y|-|-",
    "A13|N|y|8|y|y|y|y|3b|9|d9|d10|9+10|y|y|11|n|y|32up|32up|y|-|y|y|-|-",
    "A14|N|y|8|y|y|-|y|3b|9|d9|-|9+10|y|y|11|n|y|28dn|-|-|-|y|y|-|-",
    "A15|N|y|8|y|y|y|y|3b|9|d9|d10|9+10|y|y|11|n|y|28dn|28dn|y|-|y|y|-|-",
    "A16|N|y|8|y|y|y|y|3b|9|d9|d10|9+10|y|y|11|n|y|28dn|28dn|y|-|y|y|-|-",
    "A17|o|y|8|y|y|-|-|3b|-|-|d10|-|-|-|12|PHY|y|-|40up|-|y|-|-|y|-",
    "A18|o|y|8|y|y|y|-|3b|-|-|d10|-|-|-|12|PHY|y|-|40up|y|y|-|-|y|-",
    "A19|N|y|8|y|y|y|-|3b|-|-|own|-|y|y|11|n|y|-|-|-|-|y|-|-|y",
    "A20|N|y|8|y|y|y|-|3b|-|-|own|-|y|y|11|n|y|-|-|-|-|y|-|-|y",
    "A21|N|y|8|y|y|y|-|3b|-|-|own|-|y|y|11|n|-|-|-|-|-|y|-|-|y",
    "A22|N|y|8|y|y|y|-|3b|-|-|own|-|y|y|11|n|-|-|-|-|-|y|-|-|y",
    "A23|N|y|8|y|y|y|-|3b|-|-|own|-|y|y|11|n|-|-|-|-|-|y|-|-|y",
    "A24|o|-|-|-|-|-|-|-|-|-|-|-|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "A25|N|y|8|y|y|y|-|3b|-|-|own|-|y|y|11|n|-|-|-|-|-|y|-|-|y",
    "A26|N|y|8|y|y|y|-|3b|-|-|own|-|y|y|11|n|-|-|-|-|-|y|-|-|y",
    "A27|N|y|8|y|y|y|-|3b|-|-|own|-|y|y|11|n|-|-|-|-|-|y|-|-|y",
    "A28|N|y|8|y|y|y|-|3b|-|-|own|-|y|y|11|n|-|-|-|-|-|y|-|-|y",
    "A29|N|y|8|y|y|y|-|3b|-|-|own|-|y|y|11|n|-|-|-|-|-|y|-|-|y",
    "A30|N|y|8|y|y|y|-|3b|-|-|own|-|y|y|11|n|-|-|-|-|-|y|-|-|y",
    "A31|o|-|-|-|-|-|-|-|-|-|-|-|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "B0|o|y|8|y|y|-|-|3b|-|-|own|-|y|-|12|o|y|-|-|y|-|y|-|-|y",
    "B1|o|-|-|-|-|-|-|-|-|-|-|-|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "B2|o|-|-|-|-|-|-|-|-|-|-|-|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "B3|o|-|-|-|-|-|-|-|-|-|-|-|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "B4|o|y|8|y|y|-|-|3b|-|-|own|-|y|-|12|o|y|-|-|y|-|y|-|-|y",
    "B5|o|y|8|y|y|-|-|3b|-|-|own|-|y|-|12|o|y|-|-|y|-|y|-|-|y",
    "B6|o|y|8|y|y|-|-|3b|-|-|own|-|y|-|12|o|y|-|-|y|-|y|-|-|y",
    "B7|o|y|8|y|y|-|-|3b|-|-|own|-|y|-|12|o|y|-|-|y|-|y|-|-|y",
    "B8|o|y|8|y|y|-|-|3b|-|-|own|-|y|-|12|o|y|-|-|y|-|y|-|-|y",
    "B9|o|y|8|y|y|-|-|3b|-|v10|own|10|y|-|12|o|y|-|-|y|-|y|-|-|y",
    "B10|o|-|-|-|-|-|-|-|-|-|-|-|-|-|12|o|y|-|-|-|-|-|-|-|-",
    "B11|N|-|-|-|-|-|-|-|-|-|-|-|-|y|11|n|y|-|-|-|-|y|-|-|y",
};
// clang-format on
static_assert(std::size(ROWS) == 32 + 12);

/* B12 to B31, which no mask names, have what B10 has. */
constexpr const char *NAMED_BY_NO_MASK = "|o|-|-|-|-|-|-|-|-|-|-|-|-|-|12|o|y|-|-|-|-|-|-|-|-";

std::vector<std::string> split(const std::string &line)
{
    std::vector<std::string> cells;
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, '|');) {
        cells.push_back(cell);
    }
    return cells;
}

Features make_features(const std::string &line)
{
    const std::vector<std::string> names = split(COLUMNS);
    const std::vector<std::string> cells = split(line);
    if (cells.size() != names.size()) {
        throw std::logic_error(line);
    }
    Features features;
    features.name = cells[0];
    const int bit = std::stoi(cells[0].substr(1));
    (cells[0][0] == 'A' ? features.familyA : features.familyB) = 1U << bit;
    for (size_t k = 1; k < names.size(); ++k) {
        features.cells[names[k]] = cells[k];
    }
    return features;
}

std::vector<Features> make_all()
{
    std::vector<Features> all;
    for (const char *line : ROWS) {
        all.push_back(make_features(line));
    }
    for (int bit = 12; bit < 32; ++bit) {
        std::ostringstream line;
        line << 'B' << bit << NAMED_BY_NO_MASK;
        all.push_back(make_features(line.str()));
    }
    return all;
}

} // namespace

void PrintTo(const Features &features, std::ostream *stream)
{
    *stream << features.name;
}

const std::vector<Features> &all_features()
{
    static const std::vector<Features> all = make_all();
    return all;
}
