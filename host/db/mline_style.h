// Styles of multilines: how many parallel lines and where.
#pragma once

#include <numbers>
#include <string>
#include <vector>

#include "db/color.h"
#include "db/object.h"

namespace headless {
class DxfOutput;
struct DxfTag;
} // namespace headless

class AcDbMlineStyle : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbMlineStyle);

    AcDbMlineStyle() = default;

    /// Longest name in characters.
    static constexpr int kMaxNameLength = 255;

    /// Texts valid until the style changes.
    const ACHAR* name() const { return look(name_).c_str(); }
    /// The name whether or not the style is open.
    const std::wstring& nameOf() const { return name_; }
    /// eInvalidInput for a name that is empty or too long.
    Acad::ErrorStatus setName(const ACHAR* name);
    const ACHAR* description() const { return look(description_).c_str(); }
    Acad::ErrorStatus setDescription(const ACHAR* description);

    bool showMiters() const { return has(kShowMiters); }
    void setShowMiters(bool show) { set(kShowMiters, show); }
    bool filled() const { return has(kFilled); }
    void setFilled(bool filled) { set(kFilled, filled); }
    /// Ends closed by a line, by an arc over the outermost elements, or by arcs over each pair of
    /// those between them.
    bool startSquareCap() const { return has(kStartSquareCap); }
    void setStartSquareCap(bool show) { set(kStartSquareCap, show); }
    bool startRoundCap() const { return has(kStartRoundCap); }
    void setStartRoundCap(bool show) { set(kStartRoundCap, show); }
    bool startInnerArcs() const { return has(kStartInnerArcs); }
    void setStartInnerArcs(bool show) { set(kStartInnerArcs, show); }
    bool endSquareCap() const { return has(kEndSquareCap); }
    void setEndSquareCap(bool show) { set(kEndSquareCap, show); }
    bool endRoundCap() const { return has(kEndRoundCap); }
    void setEndRoundCap(bool show) { set(kEndRoundCap, show); }
    bool endInnerArcs() const { return has(kEndInnerArcs); }
    void setEndInnerArcs(bool show) { set(kEndInnerArcs, show); }

    /// What is shown, as in files.
    enum State : std::uint32_t {
        kFilled = 1,
        kShowMiters = 2,
        kStartSquareCap = 16,
        kStartInnerArcs = 32,
        kStartRoundCap = 64,
        kEndSquareCap = 256,
        kEndInnerArcs = 512,
        kEndRoundCap = 1024
    };
    /// Bits of State, and the colour of the filling, whether or not the style is open.
    std::uint32_t statesOf() const { return states_; }
    const AcCmEntityColor& fillColorOf() const { return fillColor_; }

    AcCmColor fillColor() const { return AcCmColor(look(fillColor_)); }
    Acad::ErrorStatus setFillColor(const AcCmColor& color) { return change(fillColor_, color); }
    /// Angles of the ends, radians.
    double startAngle() const { return look(startAngle_); }
    Acad::ErrorStatus setStartAngle(double angle) { return change(startAngle_, angle); }
    double endAngle() const { return look(endAngle_); }
    Acad::ErrorStatus setEndAngle(double angle) { return change(endAngle_, angle); }

    int numElements() const { return static_cast<int>(look(elements_).size()); }
    /// Offsets in drawing units at scale 1, positive to the left; elements stand from the greatest
    /// offset to the least.
    Acad::ErrorStatus addElement(int& index, double offset, const AcCmColor& color,
                                 AcDbObjectId linetype);
    /// eInvalidIndex beyond the last.
    Acad::ErrorStatus getElementAt(int index, double& offset, AcCmColor& color,
                                   AcDbObjectId& linetype) const;
    Acad::ErrorStatus removeElementAt(int index);

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

private:
    bool has(State state) const { return (look(states_) & state) != 0; }
    void set(State state, bool on) { change(states_, on ? states_ | state : states_ & ~state); }
    void readField(AcDbDxfFiler& filer, const headless::DxfTag& tag);
    void readElementField(AcDbDxfFiler& filer, const headless::DxfTag& tag);
    void writeElements(headless::DxfOutput& out) const;

    struct Element {
        double offset = 0.0;
        AcCmEntityColor color;
        AcDbObjectId linetype;
    };

    std::wstring name_;
    std::wstring description_;
    std::vector<Element> elements_;
    double startAngle_ = std::numbers::pi / 2;
    double endAngle_ = std::numbers::pi / 2;
    AcCmEntityColor fillColor_;
    std::uint32_t states_ = 0;
};
