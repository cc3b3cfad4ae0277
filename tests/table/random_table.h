// Tables drawn at random, the faults of real drawings among them.
#pragma once

#include <random>
#include <vector>

#include "table/plain_table.h"

namespace test_support {

struct RandomTable {
    std::vector<plain::Line> lines;
    std::vector<plain::Text> texts;
};

/// The same table for the same seed: up to six rows and columns, each edge of a cell drawn or not,
/// whole lines or pieces in any order and direction, with stray lines and texts in and around it.
class TableMaker {
public:
    explicit TableMaker(unsigned seed) : random_(seed) {}

    RandomTable make() {
        const std::vector<double> x = coordinates();
        const std::vector<double> y = coordinates();
        drawLines(x, y, false);
        drawLines(y, x, true);
        for (int stray = below(4); stray > 0; --stray)
            drawStray(x, y);
        if (chance(0.7)) std::shuffle(table_.lines.begin(), table_.lines.end(), random_);
        for (int text = below(2) * below(30); text > 0; --text)
            writeText(x, y);
        return table_;
    }

private:
    int below(int count) { return std::uniform_int_distribution(0, count - 1)(random_); }
    bool chance(double share) { return std::bernoulli_distribution(share)(random_); }
    double from(double low, double high) {
        return std::uniform_real_distribution(low, high)(random_);
    }

    std::vector<double> coordinates() {
        std::vector<double> all{chance(0.5) ? 0.0 : from(-1e5, 1e5)};
        for (int more = 1 + below(6); more > 0; --more)
            all.push_back(all.back() + (chance(0.05) ? from(1e-7, 1e-3) : 100.0 * (1 + below(9))));
        return all;
    }

    /// Lines along the first coordinates at each of the second; `upright` exchanges x and y.
    void drawLines(const std::vector<double>& along, const std::vector<double>& at, bool upright) {
        const double gaps = chance(0.5) ? 0.0 : 0.15;
        const bool pieces = chance(0.5);
        for (const double level : at) {
            std::size_t first = 0;
            for (std::size_t i = 1; i < along.size(); ++i) {
                const bool ends = pieces || i + 1 == along.size() || chance(gaps);
                if (ends && !chance(gaps)) draw(along[first], along[i], level, upright);
                if (ends) first = i;
            }
        }
    }

    void draw(double a, double b, double level, bool upright) {
        if (chance(0.1)) b += from(-60.0, 60.0); // stops short or goes beyond
        if (chance(0.1)) a += from(-2e-6, 2e-6);
        double other = level;
        if (chance(0.1)) other += (b - a) * from(-3e-4, 3e-4);
        if (chance(0.05)) level += from(-2e-10, 2e-10);
        if (chance(0.5)) {
            std::swap(a, b);
            std::swap(level, other);
        }
        add(upright ? plain::Line{{level, a, 0}, {other, b, 0}}
                    : plain::Line{{a, level, 0}, {b, other, 0}});
        if (chance(0.05)) add({table_.lines.back().end, table_.lines.back().start});
    }

    void drawStray(const std::vector<double>& x, const std::vector<double>& y) {
        const AcGePoint3d p{from(x.front(), x.back()), from(y.front(), y.back()), 0};
        switch (below(4)) {
        case 0:
            return add({p, p});
        case 1:
            return add({p, {x.back(), y.front(), 0}});
        case 2:
            return add({{x.front(), p.y, 0}, {x.back(), p.y, 0}});
        default:
            return add({{x.front(), y.back(), 0}, {x.front() + 1e-3, y.back(), 0}});
        }
    }

    void writeText(const std::vector<double>& x, const std::vector<double>& y) {
        static const wchar_t* const kTexts[] = {L"A", L" 12.5 ", L"\u5899\u677F",
                                                L"",  L"  ",     L"B-7"};
        plain::Text text{.text = kTexts[below(6)],
                         .position = {from(x.front() - 100, x.back() + 50),
                                      from(y.front() - 50, y.back() + 50), 0},
                         .rotation = chance(0.7) ? 0.0 : from(0.0, 6.28),
                         .height = 20.0 + static_cast<double>(table_.texts.size()),
                         .widthFactor = chance(0.5) ? 1.0 : 0.7,
                         .color = below(256)};
        if (chance(0.2))
            text.position.y = y[static_cast<std::size_t>(below(static_cast<int>(y.size())))];
        if (chance(0.2))
            text.position.x = x[static_cast<std::size_t>(below(static_cast<int>(x.size())))];
        table_.texts.push_back(text);
    }

    void add(const plain::Line& line) { table_.lines.push_back(line); }

    std::mt19937 random_;
    RandomTable table_;
};

} // namespace test_support
