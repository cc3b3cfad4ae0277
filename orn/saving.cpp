#include "saving.h"

#include <iostream>

namespace orn {

void declareOutput(CLI::App& app, std::filesystem::path& output) {
    app.add_option("-o,--output", output, "Write the drawing here instead of over its own file");
}

int saveAndFinish(OpenDrawing& opened, const std::filesystem::path& drawing,
                  const std::filesystem::path& output) {
    const std::filesystem::path& file = output.empty() ? drawing : output;
    const headless::DxfWriteResult result = opened.session().saveDrawing(file);
    if (!result) {
        std::cerr << "orn: " << result.refusal << '\n';
        return kFailure;
    }
    for (const std::string& note : result.notes)
        std::cerr << file.string() << ": " << note << '\n';
    return opened.finish();
}

} // namespace orn
