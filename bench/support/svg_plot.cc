// SPDX-License-Identifier: Apache-2.0
#include "bench/support/svg_plot.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <fmt/format.h>

namespace bench {
namespace {

constexpr double width = 760;
constexpr double height = 460;
constexpr double left = 80;
constexpr double right = width - 30;
constexpr double top = 60;
constexpr double bottom = height - 70;

constexpr std::array colours{"#0b62a4", "#c2410c", "#2e7d32", "#6a1b9a"};

// One axis: which numbers it shows, and where.
struct axis {
    double least;
    double most;
    double from;
    double to;

    [[nodiscard]] double at(double value) const {
        return from + (to - from) * std::log(value / least) / std::log(most / least);
    }
};

// 1, 2, 5, 10, 20 ...: the number of this place in the row.
double round_number(int place) {
    constexpr std::array steps{1.0, 2.0, 5.0};
    const int decade = static_cast<int>(std::floor(place / 3.0));
    return steps[static_cast<size_t>(place - 3 * decade)] * std::pow(10, decade);
}

// The round numbers around those of all points.
axis axis_over(const log_plot &plot, double plot_point::*coordinate, double from, double to) {
    double least = plot.curves.front().points.front().*coordinate;
    double most = least;
    for (const plot_curve &curve : plot.curves) {
        for (const plot_point &point : curve.points) {
            least = std::min(least, point.*coordinate);
            most = std::max(most, point.*coordinate);
        }
    }
    int first = 3 * static_cast<int>(std::floor(std::log10(least)));
    while (round_number(first + 1) <= least) ++first;
    int last = first + 1;
    while (round_number(last) < most) ++last;
    return {round_number(first), round_number(last), from, to};
}

std::vector<double> ticks_of(const axis &of) {
    std::vector<double> ticks;
    int place = 3 * static_cast<int>(std::floor(std::log10(of.least)));
    for (; round_number(place) <= of.most; ++place)
        if (round_number(place) >= of.least) ticks.push_back(round_number(place));
    return ticks;
}

std::string text(double x, double y, const char *attributes, const std::string &words) {
    return fmt::format("<text x=\"{:.1f}\" y=\"{:.1f}\" {}>{}</text>\n", x, y, attributes, words);
}

std::string line(double x1, double y1, double x2, double y2) {
    return fmt::format("<path d=\"M{:.1f} {:.1f}L{:.1f} {:.1f}\" stroke=\"#d0d0d0\"/>\n", x1, y1, x2, y2);
}

std::string grid(const axis &x, const axis &y) {
    std::string grid;
    for (const double tick : ticks_of(x)) {
        grid += line(x.at(tick), top, x.at(tick), bottom);
        grid += text(x.at(tick), bottom + 20, "text-anchor=\"middle\"", fmt::format("{:g}", tick));
    }
    for (const double tick : ticks_of(y)) {
        grid += line(left, y.at(tick), right, y.at(tick));
        grid += text(left - 8, y.at(tick) + 4, "text-anchor=\"end\"", fmt::format("{:g}", tick));
    }
    return grid;
}

std::string labels(const log_plot &plot) {
    return text(width / 2, 30, "text-anchor=\"middle\" font-size=\"17\"", plot.title) +
           text((left + right) / 2, height - 22, "text-anchor=\"middle\"", plot.x_label) +
           text(-(top + bottom) / 2, 22, "text-anchor=\"middle\" transform=\"rotate(-90)\"", plot.y_label);
}

// With its name above its last point.
std::string curve(const plot_curve &of, const axis &x, const axis &y, const char *colour) {
    std::string way;
    std::string dots;
    for (const plot_point &point : of.points) {
        const double across = x.at(point.x);
        const double down = y.at(point.y);
        way += fmt::format("{}{:.1f} {:.1f}", way.empty() ? 'M' : 'L', across, down);
        dots += fmt::format("<circle cx=\"{:.1f}\" cy=\"{:.1f}\" r=\"4\"/>\n", across, down);
    }
    const plot_point &end = of.points.back();
    return fmt::format("<g fill=\"{0}\"><path d=\"{1}\" fill=\"none\" stroke=\"{0}\" stroke-width=\"2.5\"/>\n", colour,
                       way) +
           dots + text(x.at(end.x), y.at(end.y) - 12, "text-anchor=\"end\" font-weight=\"bold\"", of.name) + "</g>\n";
}

}  // namespace

std::string svg_of(const log_plot &plot) {
    const axis x = axis_over(plot, &plot_point::x, left, right);
    const axis y = axis_over(plot, &plot_point::y, bottom, top);
    std::string svg = fmt::format(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 {0} {1}\" width=\"{0}\" height=\"{1}\" "
        "font-family=\"sans-serif\" font-size=\"14\" fill=\"#222222\">\n"
        "<rect width=\"{0}\" height=\"{1}\" fill=\"#ffffff\"/>\n",
        width, height);
    svg += grid(x, y) + labels(plot);
    for (size_t i = 0; i < plot.curves.size(); ++i) svg += curve(plot.curves[i], x, y, colours.at(i));
    return svg + "</svg>\n";
}

}  // namespace bench
