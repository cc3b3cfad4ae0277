// The recognition of drawn tables as it is stated, step by step on plain lists: what the library's
// answers are compared with, and its speed.
#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include <afxwin.h>
#include <gepnt3d.h>
#include <gept3dar.h>

#include "OrnCore/text_info.h"
#include "OrnCore/zel_dwg.h"
#include "OrnCore/zel_math.h"

namespace plain {

struct Line {
    AcGePoint3d start, end;
};

struct Text {
    CString text;
    AcGePoint3d position;
    double rotation = 0.0;
    double height = 350.0;
    double widthFactor = 1.0;
    int color = 0;
};

struct Table {
    int rowLines = 0;
    int columnLines = 0;
    std::vector<double> widths, heights;
    std::vector<int> mergeColumns, mergeRows, mergeMoreColumns, mergeMoreRows;
    std::vector<CString> texts;
    std::vector<int> colors;
    std::vector<double> textHeights;
};

using Points = std::vector<AcGePoint3d>;

inline void removeRepeatedLines(std::vector<Line>& lines) {
    const auto index = [](std::size_t i) { return static_cast<std::ptrdiff_t>(i); };
    for (std::size_t i = 0; i < lines.size(); ++i) {
        for (std::size_t j = i + 1; j < lines.size();) {
            const Line& a = lines[i];
            const Line& b = lines[j];
            const bool same = a.start.isEqualTo(b.start) && a.end.isEqualTo(b.end);
            const bool reversed = a.start.isEqualTo(b.end) && a.end.isEqualTo(b.start);
            if (same || reversed)
                lines.erase(lines.begin() + index(j));
            else
                ++j;
        }
    }
}

inline void takeStraight(const std::vector<Line>& lines, Points& starts, Points& ends) {
    for (const Line& line : lines) {
        const double a = CZelDwg::GetAngle(line.start, line.end, 1);
        for (const double axis : {0.0, 0.5, 1.0, 1.5, 2.0}) {
            if (!CZelMath::EqualTo(a, axis * std::numbers::pi, 0.01)) continue;
            starts.push_back(line.start);
            ends.push_back(line.end);
            break;
        }
    }
}

inline void uniteLine(Points& a, Points& b) {
    for (std::size_t i = 0; i + 1 < a.size(); ++i) {
        for (std::size_t j = i + 1; j + 1 < a.size();) {
            if (a[i].isEqualTo(a[j]))
                a[i] = b[j];
            else if (a[i].isEqualTo(b[j]))
                a[i] = a[j];
            else if (b[i].isEqualTo(a[j]))
                b[i] = b[j];
            else if (b[i].isEqualTo(b[j]))
                b[i] = a[j];
            else {
                ++j;
                continue;
            }
            a.erase(a.begin() + static_cast<std::ptrdiff_t>(j));
            b.erase(b.begin() + static_cast<std::ptrdiff_t>(j));
        }
    }
}

inline void removeRepeat(std::vector<double>& list) {
    for (std::size_t i = 0; i < list.size(); ++i) {
        for (std::size_t j = i + 1; j < list.size();) {
            if (CZelMath::EqualTo(list[i], list[j], 1e-6))
                list.erase(list.begin() + static_cast<std::ptrdiff_t>(j));
            else
                ++j;
        }
    }
}

inline int doubleAryFind(const std::vector<double>& list, double v) {
    if (list.empty()) return -1;
    const double tolerance = std::abs(list.back() - list.front()) * 1e-5;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (CZelMath::EqualTo(list[i], v, tolerance)) return static_cast<int>(i);
    return -1;
}

inline CString getText(const std::vector<Text>& texts, const AcGePoint3dArray& outline,
                       int& index) {
    CString result;
    index = -1;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const TextInfo info{.widthFactor = texts[i].widthFactor, .height = texts[i].height};
        const double width = CZelDwg::GetTextWidth(texts[i].text, info);
        AcGePoint3d middle = texts[i].position;
        CZelDwg::MovePtTo(middle, width / 2, texts[i].rotation);
        if (CZelDwg::PtInClosePolygon(&outline, middle, 1e-6) == -1) continue;
        result += texts[i].text;
        index = static_cast<int>(i);
    }
    return result;
}

/// The found cell's place in the grid and its texts.
inline void noteCell(const AcGePoint3dArray& outline, const std::vector<double>& x,
                     const std::vector<double>& y, const std::vector<Text>& texts, Table& table) {
    const int c1 = doubleAryFind(x, outline[0].x);
    const int c2 = doubleAryFind(x, outline[1].x);
    const int r1 = doubleAryFind(y, outline[0].y);
    const int r2 = doubleAryFind(y, outline[3].y);
    const bool found = c1 != -1 && c2 != -1 && r1 != -1 && r2 != -1;
    if (found && (std::abs(c2 - c1) >= 2 || std::abs(r2 - r1) >= 2)) {
        table.mergeColumns.push_back(c1 + 1);
        table.mergeRows.push_back(r1 + 1);
        table.mergeMoreColumns.push_back(std::abs(c2 - c1 - 1));
        table.mergeMoreRows.push_back(std::abs(r2 - r1 - 1));
    }
    if (c1 == -1 || r1 == -1) return;
    int index = -1;
    CString s = getText(texts, outline, index);
    if (s.IsEmpty() && index == -1) return;
    const auto cell = static_cast<std::size_t>((table.columnLines - 1) * r1 + c1);
    if (cell >= table.texts.size()) return;
    table.texts[cell] = s.Trim();
    table.colors[cell] = texts[static_cast<std::size_t>(index)].color;
    table.textHeights[cell] = texts[static_cast<std::size_t>(index)].height;
}

inline void searchCells(const Points& hs, const Points& he, const Points& vs, const Points& ve,
                        const std::vector<double>& x, const std::vector<double>& y,
                        const std::vector<Text>& texts, Table& table) {
    const auto cross = [&](std::size_t h, std::size_t v, AcGePoint3d& out) {
        return CZelDwg::GetLineInterSect(hs[h], he[h], vs[v], ve[v], out) > 0;
    };
    const auto closeCell = [&](std::size_t i, std::size_t j) {
        AcGePoint3d tl, tr, br, bl;
        if (!cross(i, j, tl)) return;
        for (std::size_t k = j + 1; k < vs.size(); ++k) {
            if (!cross(i, k, tr)) continue;
            for (std::size_t m = i + 1; m < hs.size(); ++m) {
                if (!cross(m, k, br) || !cross(m, j, bl)) continue;
                AcGePoint3dArray outline;
                for (const AcGePoint3d& corner : {tl, tr, br, bl})
                    outline.append(corner);
                noteCell(outline, x, y, texts, table);
                return;
            }
        }
    };
    for (std::size_t i = 0; i + 1 < hs.size(); ++i)
        for (std::size_t j = 0; j + 1 < vs.size(); ++j)
            closeCell(i, j);
}

inline bool analyseCoordinate(const Points& hs, const Points& he, const Points& vs,
                              const Points& ve, const std::vector<Text>& texts, Table& table) {
    if (hs.empty() || vs.empty()) return false;
    std::vector<double> x, y;
    for (const AcGePoint3d& p : vs)
        x.push_back(CZelDwg::GetUprightPoint(p, hs.back(), he.back()).x);
    for (const AcGePoint3d& p : hs)
        y.push_back(CZelDwg::GetUprightPoint(p, vs.front(), ve.front()).y);
    removeRepeat(x);
    removeRepeat(y);
    if (x.size() < 2 || y.size() < 2) return false;
    table.rowLines = static_cast<int>(y.size());
    table.columnLines = static_cast<int>(x.size());
    const std::size_t cells = (y.size() - 1) * (x.size() - 1);
    table.texts.resize(cells);
    table.colors.resize(cells, 0);
    table.textHeights.resize(cells, 350.0);
    table.widths = {25.0};
    for (std::size_t c = 1; c < x.size(); ++c)
        table.widths.push_back((x[c] - x[c - 1]) / 40.0);
    table.heights = {25.0};
    for (std::size_t r = 1; r < y.size(); ++r)
        table.heights.push_back((y[r - 1] - y[r]) / 40.0);
    searchCells(hs, he, vs, ve, x, y, texts, table);
    return true;
}

inline bool analyseTable(std::vector<Line> lines, const std::vector<Text>& texts, Table& table) {
    removeRepeatedLines(lines);
    Points starts, ends, hs, he, vs, ve;
    takeStraight(lines, starts, ends);
    if (starts.size() < 4) return false;
    for (std::size_t i = 0; i < starts.size(); ++i) {
        const AcGePoint3d& s = starts[i];
        const AcGePoint3d& e = ends[i];
        if (CZelMath::EqualTo(s.y, e.y, std::abs(s.x - e.x) * 0.0001)) {
            hs.push_back(s);
            he.push_back(e);
        } else if (CZelMath::EqualTo(s.x, e.x, std::abs(s.y - e.y) * 0.0001)) {
            vs.push_back(s);
            ve.push_back(e);
        }
    }
    uniteLine(vs, ve);
    uniteLine(hs, he);
    const auto byX = [](const AcGePoint3d& a, const AcGePoint3d& b) { return a.x < b.x; };
    const auto byY = [](const AcGePoint3d& a, const AcGePoint3d& b) { return a.y > b.y; };
    for (Points* list : {&vs, &ve})
        std::stable_sort(list->begin(), list->end(), byX);
    for (Points* list : {&hs, &he})
        std::stable_sort(list->begin(), list->end(), byY);
    return analyseCoordinate(hs, he, vs, ve, texts, table);
}

} // namespace plain
