#include "excel/server.h"

#include "excel/objects.h"

namespace headless::excel {
namespace {

constexpr const wchar_t* kProgramId = L"Excel.Application";
constexpr CLSID kClassId = {
    0x6f2d5b10, 0x3c41, 0x4e8a, {0x9b, 0x1e, 0x52, 0x7a, 0x10, 0xc4, 0x88, 0x3d}};

} // namespace

void install(AutomationServers& servers, std::shared_ptr<Engine> engine) {
    servers.add({kProgramId, kClassId, [engine = std::move(engine)] {
                     auto state = std::make_shared<ApplicationState>();
                     state->engine = engine;
                     return makeApplication(state);
                 }});
}

void uninstall(AutomationServers& servers) { servers.remove(kProgramId); }

} // namespace headless::excel
