// What a chart shows: bars over their categories, a series beside the other.
#pragma once

#include <string>
#include <vector>

namespace veldona::report {

// What tells the bars of one series from those of another without colour.
enum class Filling { Solid, Hatched, Crossed };

struct ChartSeries {
    std::string name;
    Filling filling = Filling::Solid;
    std::vector<double> values; // one a category
};

struct Chart {
    std::string title;
    std::vector<std::string> categories;
    std::vector<ChartSeries> series;
};

} // namespace veldona::report
