// Multileaders: notes with arrows that lead from them.
#pragma once

#include "db/entity.h"
#include "db/mleader_context.h"

/// Text, or a block with its attributes, and the arrows to what it is about: drawn as it was when
/// its file was saved, whatever became of its style since. Of texts' frames only the rectangle is
/// drawn, and no lines above or below the text.
///
/// The record in the file holds more than this. It cannot be transformed (eNotApplicable), and only
/// the drawing that a multileader was read into can hold it.
class AcDbMLeader : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbMLeader);

    AcDbMLeader() = default;

    /// Its parts at work: whether or not the multileader is open.
    const headless::MLeaderContext& context() const { return context_; }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

protected:
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    /// Lines or splines, filled triangles or references for the arrows, then the contents.
    Acad::ErrorStatus subExplode(headless::NewEntities& parts) const override;
    void subDescribe(headless::GeometrySink& sink) const override;
    bool keepsExtents() const override { return false; }

private:
    using Context = headless::MLeaderContext;

    template <class T>
    T& addLook(headless::NewEntities& parts, const AcCmEntityColor& color,
               std::unique_ptr<T> part) const;
    template <class T>
    T& addStroke(headless::NewEntities& parts, const Context::Line& line,
                 std::unique_ptr<T> part) const;
    void addLine(headless::NewEntities& parts, const Context::Leader& leader,
                 const Context::Line& line) const;
    void addArrow(headless::NewEntities& parts, const Context::Line& line,
                  const AcGePoint3d& towards) const;
    void addText(headless::NewEntities& parts) const;
    void addBlock(headless::NewEntities& parts) const;
    void addLabel(headless::NewEntities& parts, const Context::Label& label,
                  const AcGeMatrix3d& placing) const;

    Context context_;
};
