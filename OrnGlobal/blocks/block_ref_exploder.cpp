#include "blocks/block_ref_exploder.h"

#include <adslib.h>
#include <dbsymtb.h>

#include "blocks/entity_clone.h"
#include "blocks/exploded_reference.h"
#include "frame/ac_ut_sym_tbl.h"
#include "frame/current_space.h"
#include "frame/object_handle.h"

namespace {

AcUtBlockRefExploderParam inCapitals(AcUtBlockRefExploderParam param) {
    std::set<CString> layers;
    for (CString layer : param.layers)
        layers.insert(layer.MakeUpper());
    param.layers = std::move(layers);
    return param;
}

} // namespace

AcUtBlockReferenceExploder::AcUtBlockReferenceExploder(AcUtBlockRefExploderParam param)
    : param_(inCapitals(std::move(param))) {}

Acad::ErrorStatus AcUtBlockReferenceExploder::explode(const AcDbObjectId& reference,
                                                      AcDbObjectIdArray& made) {
    blocks::NewEntities parts;
    {
        const ReadHandle<AcDbBlockReference> open(reference);
        if (!open) return open.status();
        blocks::ReferenceTaker taker(param_);
        if (taker.piecesIn(*open, open->layerId()) > kMostPieces) {
            acutPrintf(L"\nThe block reference shows more than %d entities and stays as it is.",
                       kMostPieces);
            return Acad::eOutOfRange;
        }
        parts = taker.take(*open, open->layerId());
        leftOut_ += taker.leftOut();
    }
    const WriteHandle<AcDbBlockTableRecord> space(
        param_.space.isNull() ? Common::CurrentSpaceId(reference.database()) : param_.space);
    if (!space) return space.status();
    for (auto& part : parts) {
        const AcDbObjectId id = blocks::appendAndClose(*space, std::move(part));
        if (!id.isNull()) made.append(id);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcUtSymTbl::explodeToCurrentSpace(const AcDbObjectId& reference,
                                                    AcDbObjectIdArray& made) {
    AcUtBlockRefExploderParam param;
    param.nested = false;
    return AcUtBlockReferenceExploder(param).explode(reference, made);
}
