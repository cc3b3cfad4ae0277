#include "layerpick/pick_aperture.h"

#include <gepnt3d.h>

#include "OrnCore/rw_sys_var.h"

namespace layerpick {

double pickAperture() {
    int pixels = 3;
    double viewHeight = 0.0;
    AcGePoint3d screen(0.0, 0.0, 0.0);
    rwSysVar::GetVar(L"PICKBOX", &pixels);
    rwSysVar::GetVar(L"VIEWSIZE", &viewHeight);
    rwSysVar::GetVar(L"SCREENSIZE", &screen);
    return viewHeight / screen.y * (2 * pixels + 1);
}

} // namespace layerpick
