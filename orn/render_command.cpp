#include "render_command.h"

#include <algorithm>
#include <cstring>
#include <iostream>

#include "argument_text.h"
#include "ed/viewports.h"
#include "layerpick/layer_highlight.h"
#include "numbers.h"
#include "open_drawing.h"
#include "view/picture.h"
#include "win/code_page.h"
#include "win/replace_file.h"

namespace orn {
namespace {

int fail(const std::string& reason, int status) {
    std::cerr << "orn: " << reason << '\n';
    return status;
}

/// Puts what the arguments say into `picture`; the answer says which of them is wrong, or is empty.
std::string readArguments(const RenderOptions& options, headless::PictureOptions& picture) {
    const auto format = headless::pictureFormatOf(options.output);
    if (!format) return options.output.string() + ": a picture ends in .png, .svg or .pdf";
    picture.format = *format;
    if (!options.size.empty()) {
        const auto size = parseNumbers(options.size, 'x', 2);
        if (!size) return "--size is a width and a height such as 1600x1200";
        picture.width = (*size)[0];
        picture.height = (*size)[1];
    }
    if (!options.window.empty()) {
        const auto corners = parseNumbers(options.window, ',', 4);
        if (!corners) return "--window is two corners such as 0,0,5000,3000";
        const auto [left, right] = std::minmax((*corners)[0], (*corners)[2]);
        const auto [bottom, top] = std::minmax((*corners)[1], (*corners)[3]);
        picture.window = {left, bottom, right, top};
    }
    picture.layout = headless::fromUtf8(options.layout);
    picture.isDark = options.dark;
    return {};
}

/// @param layers  highlighted as picking them would, with copies of what blocks show on them.
auto drawHighlighted(AcDbDatabase& db, const std::vector<CString>& layers,
                     const headless::PictureOptions& options) {
    std::optional<layerpick::LayerHighlight> highlight;
    if (!layers.empty()) highlight.emplace().show(layers);
    return headless::drawPicture(db, options);
}

} // namespace

CLI::App* declareRender(CLI::App& app, RenderOptions& options) {
    CLI::App* render = app.add_subcommand("render", "Draw a picture of model space");
    render->add_option("FILE", options.drawing, "Drawing (DXF)")->required();
    render->add_option("-o,--output", options.output, "Picture (.png, .svg, .pdf)")->required();
    render->add_option("--window", options.window, "Only this part: X1,Y1,X2,Y2");
    render->add_option("--highlight", options.highlighted,
                       "Draw these layers dashed, joined by commas, any case");
    render->add_option("--size", options.size, "WxH in pixels (points for PDF), 1600x1200");
    render->add_option("--layout", options.layout, "Draw this sheet instead of model space");
    render->add_flag("--dark", options.dark, "On black, with what is black on paper in white");
    return render;
}

int runRender(const RenderOptions& options) {
    headless::PictureOptions wanted;
    if (const std::string wrong = readArguments(options, wanted); !wrong.empty())
        return fail(wrong, kWrongUsage);
    OpenDrawing opened(options.drawing);
    if (!opened) return kFailure;
    headless::showModel(*opened.database());
    const auto picture = drawHighlighted(*opened.database(), namesIn(options.highlighted), wanted);
    if (const auto* failure = std::get_if<headless::PictureFailure>(&picture))
        return fail(options.drawing.string() + ": " + failure->reason, kFailure);
    struct stat written {};
    if (const int problem =
            headless::replaceFile(options.output.string(), std::get<std::string>(picture),
                                  headless::Durability::kProcess, written);
        problem != 0)
        return fail(options.output.string() + ": " + std::strerror(problem), kFailure);
    return opened.finish();
}

} // namespace orn
