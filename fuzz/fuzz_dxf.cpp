// Feeds the DXF reader with anything. Whatever comes, it must answer with a drawing or a refusal,
// and what it made of the file must bear being looked at.
#include <cstddef>
#include <cstdint>
#include <string>

#include "db/curve.h"
#include "db/database.h"
#include "db/open.h"
#include "db/residence.h"
#include "dxf/reader.h"

namespace {

void measure(AcDbObjectId id) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenAcDbEntity(entity, id, AcDb::kForRead) != Acad::eOk) return;
    AcDbExtents box;
    (void)entity->getGeomExtents(box);
    if (const auto* const curve = AcDbCurve::cast(entity)) {
        double value = 0.0;
        (void)curve->getArea(value);
        if (curve->getEndParam(value) == Acad::eOk) (void)curve->getDistAtParam(value, value);
    }
    entity->close();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    AcDbDatabase db(false, true);
    headless::DxfReadReport report;
    const auto result =
        headless::readDxf(db, headless::DxfInput::fromMemory(std::move(bytes)), "fuzz", report);
    if (!result) return 0;
    for (const AcDbObjectId id : headless::Residence::residents(db))
        measure(id);
    return 0;
}
