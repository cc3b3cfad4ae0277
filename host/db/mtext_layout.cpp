#include "db/mtext_layout.h"

#include <algorithm>
#include <cmath>

#include "db/state.h"

namespace headless {
namespace {

/// What is not broken: a letter or a fraction.
struct Cell {
    const MTextRun* run;
    wchar_t letter; // 0 for a fraction
    double width;
};

/// Base lines are five thirds of the letters' height apart.
constexpr double kLinePitch = 5.0 / 3.0;
/// Tabs go to the next multiple of that many text heights.
constexpr double kTabStop = 4.0;

using Cells = std::vector<Cell>;

double scaleOf(const MTextFormat& format) { return format.height * format.widthFactor; }

const TextFont& fontOf(const MTextFormat& format) {
    return DbState::current().fonts().find(format.font);
}

double fractionWidth(const MTextRun& run) {
    const TextFont& font = fontOf(run.format);
    const double upper = font.width(run.text);
    const double lower = font.width(run.lower);
    // A slanted bar parts them side by side.
    const double letters = run.bar == L'#' ? upper + lower : std::max(upper, lower);
    return letters * kFractionHeight * scaleOf(run.format);
}

Cells cellsOf(const MTextParagraph& paragraph) {
    Cells cells;
    for (const MTextRun& run : paragraph) {
        if (run.isFraction()) {
            cells.push_back({&run, 0, fractionWidth(run)});
            continue;
        }
        const TextFont& font = fontOf(run.format);
        const double scale = scaleOf(run.format) * run.format.tracking;
        for (const wchar_t letter : run.text)
            cells.push_back({&run, letter, font.width(letter) * scale});
    }
    return cells;
}

/// Gives tabs the room up to their stops.
void stretchTabs(Cells& cells) {
    double reached = 0.0;
    for (Cell& cell : cells) {
        if (cell.letter == L'\t') {
            const double stop = kTabStop * cell.run->format.height;
            cell.width = (std::floor(reached / stop) + 1.0) * stop - reached;
        }
        reached += cell.width;
    }
}

/// Where the line that starts at `begin` ends: at the last place to break at that fits. A word that
/// is longer than a line goes beyond it.
std::size_t lineEnd(const Cells& cells, std::size_t begin, double width) {
    std::size_t breakAt = begin;
    double reached = 0.0;
    for (std::size_t i = begin; i < cells.size(); ++i) {
        const bool isBlank = cells[i].letter == L' ';
        const bool followsSquare = i > begin && isSquareLetter(cells[i - 1].letter);
        if (i > begin && (isBlank || followsSquare)) breakAt = i;
        const bool isFull = reached + cells[i].width > width || reached > width;
        if (isFull && !isBlank && breakAt > begin) return breakAt;
        reached += cells[i].width;
    }
    return cells.size();
}

class Composer {
public:
    explicit Composer(const MTextFrame& frame) : frame_(frame) {}

    void addParagraph(const MTextParagraph& paragraph) {
        Cells cells = cellsOf(paragraph);
        stretchTabs(cells);
        std::size_t begin = 0;
        do {
            const std::size_t end =
                frame_.width > 0.0 ? lineEnd(cells, begin, frame_.width) : cells.size();
            addLine(cells, begin, end);
            begin = end;
            while (begin < cells.size() && cells[begin].letter == L' ')
                ++begin;
        } while (begin < cells.size());
    }

    MTextLayout finish() {
        for (const Line& line : lines_) {
            const double shift = (layout_.width - line.width) * frame_.alignment;
            for (std::size_t i = line.begin; i < line.end; ++i)
                layout_.runs[i].origin.x += shift;
        }
        return std::move(layout_);
    }

private:
    struct Line {
        std::size_t begin; // of its runs
        std::size_t end;
        double width;
    };

    void addLine(const Cells& cells, std::size_t begin, std::size_t end) {
        const double baseLine = -nextBaseLine(cells, begin, end);
        Line line{layout_.runs.size(), 0, 0.0};
        for (std::size_t i = begin; i < end; ++i) {
            const Cell& cell = cells[i];
            if (i == begin || cell.run != cells[i - 1].run) {
                layout_.runs.push_back({*cell.run, {line.width, baseLine}, 0.0});
                if (cell.letter != 0) layout_.runs.back().run.text.clear();
            }
            if (cell.letter != 0) layout_.runs.back().run.text += cell.letter;
            layout_.runs.back().width += cell.width;
            line.width += cell.width;
        }
        line.end = layout_.runs.size();
        lines_.push_back(line);
        layout_.width = std::max(layout_.width, line.width);
    }

    /// How far below the box's top the line stands, by its highest letters.
    double nextBaseLine(const Cells& cells, std::size_t begin, std::size_t end) {
        double height = begin == end ? frame_.height : 0.0;
        for (std::size_t i = begin; i < end; ++i)
            height = std::max(height, cells[i].run->format.height);
        layout_.height += lines_.empty() ? height : height * kLinePitch * frame_.lineSpacing;
        return layout_.height;
    }

    MTextFrame frame_;
    MTextLayout layout_;
    std::vector<Line> lines_;
};

} // namespace

MTextLayout layOut(const std::vector<MTextParagraph>& paragraphs, const MTextFrame& frame) {
    Composer composer(frame);
    for (const MTextParagraph& paragraph : paragraphs)
        composer.addParagraph(paragraph);
    return composer.finish();
}

} // namespace headless
