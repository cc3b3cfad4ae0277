// tiny_host MODULE DRAWING: opens the drawing, loads the module and runs its command.
#include <iostream>

#include "headless/session.h"
#include "win/code_page.h"

int main(int /*argc*/, char** argv) {
    headless::Session session;
    if (const auto problem = session.loadModule(argv[1])) {
        std::cerr << *problem << '\n';
        return 1;
    }
    const headless::OpenResult opened = session.openDrawing(argv[2]);
    if (!opened) {
        std::cerr << opened.refusal << '\n';
        return 1;
    }
    session.run(L"TINYLENGTH");
    std::cout << headless::toUtf8(session.output()) << '\n';
    return session.leftovers().empty() ? 0 : 1;
}
