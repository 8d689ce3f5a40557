// SPDX-License-Identifier: Apache-2.0
// svg_plot.h: curves of measurements as a picture.
#ifndef BENCH_SUPPORT_SVG_PLOT_H
#define BENCH_SUPPORT_SVG_PLOT_H

#include <string>
#include <vector>

namespace bench {

struct plot_point {
    double x;
    double y;
};

struct plot_curve {
    std::string name;  // no character that XML takes for its own; so with all texts here
    std::vector<plot_point> points;
};

// Curves over two logarithmic axes. All numbers are above 0, and each curve has a point.
struct log_plot {
    std::string title;
    std::string x_label;
    std::string y_label;
    std::vector<plot_curve> curves;  // at most as many as there are colours
};

// An SVG document on a white ground of its own, so that it can be read on pages of any colour.
std::string svg_of(const log_plot &plot);

}  // namespace bench

#endif
