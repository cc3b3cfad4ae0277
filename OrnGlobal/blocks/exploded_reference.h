// What a block reference shows, as new entities. Inside the library only.
#pragma once

#include <vector>

#include <dbents.h>

#include "blocks/block_ref_exploder.h"
#include "blocks/clip_entity.h"
#include "blocks/piece_count.h"

namespace blocks {

/// Takes references apart, those within their blocks before the references themselves.
class ReferenceTaker {
public:
    /// @param param  its layers in capitals.
    explicit ReferenceTaker(const AcUtBlockRefExploderParam& param)
        : param_(param), pieces_(param) {}

    /// What a reference shows, in the coordinates that it stands in.
    /// @param reference  open for reading.
    /// @param layer      its effective layer.
    [[nodiscard]] NewEntities take(const AcDbBlockReference& reference, AcDbObjectId layer);

    /// See PieceCount::in.
    [[nodiscard]] double piecesIn(const AcDbBlockReference& reference, AcDbObjectId layer) {
        return pieces_.in(reference, layer);
    }

    [[nodiscard]] int leftOut() const { return leftOut_; }

private:
    /// A reference being taken apart.
    struct Frame {
        const AcDbBlockReference& reference;
        AcDbObjectId layer;
    };

    void takeContents(const Frame& frame, NewEntities& parts);
    [[nodiscard]] NewEntities takeEntity(const AcDbEntity& entity, const Frame& frame);
    void takeAttributes(const Frame& frame, NewEntities& parts);
    [[nodiscard]] NewEntities placed(NewEntities parts, const Frame& frame);

    const AcUtBlockRefExploderParam& param_;
    PieceCount pieces_;
    std::vector<AcDbObjectId> blocks_; // those that are being taken apart, the outermost first
    int leftOut_ = 0;
};

} // namespace blocks
