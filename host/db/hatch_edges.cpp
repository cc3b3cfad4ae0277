// The edges of hatch loops as curves of the plane.
#include <memory>

#include "db/hatch_loop.h"
#include "ge/circ_arc.h"
#include "ge/lines.h"

namespace {

using headless::CurvePiece;

AcGePoint2d flat(const AcGePoint3d& point) { return {point.x, point.y}; }
AcGePoint3d lifted(const AcGePoint2d& point) { return {point.x, point.y, 0.0}; }

/// A piece of a curve at height 0, possibly run the other way.
class PieceCurve : public AcGeCurve2d {
public:
    PieceCurve(const CurvePiece& piece, AcGe::EntityId kind, bool backwards)
        : piece_(piece), kind_(kind), backwards_(backwards) {}

    AcGe::EntityId type() const override { return kind_; }
    PieceCurve* copy() const override { return new PieceCurve(*this); }

protected:
    AcGeInterval interval() const override { return {piece_.startParam(), piece_.endParam()}; }
    AcGePoint2d pointAt(double param) const override { return flat(piece_.pointAt(own(param))); }
    AcGeVector2d derivativeAt(double param, int order) const override {
        if (order > 2) return {};
        const AcGeVector3d derivative =
            order == 1 ? piece_.firstDerivative(own(param)) : piece_.secondDerivative(own(param));
        const double sign = backwards_ && order == 1 ? -1.0 : 1.0;
        return AcGeVector2d(derivative.x, derivative.y) * sign;
    }
    double closestParam(const AcGePoint2d& point) const override {
        return own(piece_.nearestParam(lifted(point)));
    }
    double lengthBetween(double from, double to) const override {
        return std::abs(piece_.lengthTo(own(to)) - piece_.lengthTo(own(from)));
    }
    void reverse() override { backwards_ = !backwards_; }
    void apply(const AcGeMatrix2d& mat) override {
        AcGeMatrix3d inSpace;
        for (unsigned int row = 0; row < 2; ++row) {
            inSpace.entry[row][0] = mat.entry[row][0];
            inSpace.entry[row][1] = mat.entry[row][1];
            inSpace.entry[row][3] = mat.entry[row][2];
        }
        piece_ = piece_.transformed(inSpace);
    }
    bool equals(const AcGeEntity2d& other, const AcGeTol& tol) const override {
        const auto& curve = static_cast<const PieceCurve&>(other);
        constexpr int kSamples =
            16; // More than a curve of the usual degrees can share with another.
        const double range = piece_.endParam() - piece_.startParam();
        for (int i = 0; i <= kSamples; ++i) {
            const double param = piece_.startParam() + range * i / kSamples;
            if (!pointAt(param).isEqualTo(curve.pointAt(param), tol)) return false;
        }
        return true;
    }

private:
    double own(double param) const {
        return backwards_ ? piece_.startParam() + piece_.endParam() - param : param;
    }

    CurvePiece piece_;
    AcGe::EntityId kind_;
    bool backwards_;
};

std::unique_ptr<AcGeCurve2d> circularArc(const CurvePiece& arc, bool clockwise) {
    const double radius = arc.firstAxis().length();
    const AcGeVector2d reference(arc.firstAxis().x, arc.firstAxis().y);
    const bool turnsLeft = arc.firstAxis().crossProduct(arc.secondAxis()).z > 0.0;
    // Seen the other way the arc runs from its end to its start, its angles counted likewise.
    if (!clockwise)
        return std::make_unique<AcGeCircArc2d>(flat(arc.center()), radius, arc.startParam(),
                                               arc.endParam(), reference, !turnsLeft);
    return std::make_unique<AcGeCircArc2d>(flat(arc.center()), radius, -arc.endParam(),
                                           -arc.startParam(), reference, turnsLeft);
}

} // namespace

Acad::ErrorStatus AcDbHatch::getLoopAt(int index, Adesk::Int32& type, AcGeVoidPointerArray& edges,
                                       AcGeIntArray& edgeTypes) const {
    if (index < 0 || index >= numLoops()) return Acad::eInvalidIndex;
    const Loop& loop = loops_[static_cast<std::size_t>(index)];
    if (loop.isPolyline()) return Acad::eNotApplicable;
    type = loop.type;
    edges.removeAll();
    edgeTypes.removeAll();
    for (const Edge& edge : loop.edges) {
        std::unique_ptr<AcGeCurve2d> curve;
        if (edge.kind == Edge::kLine)
            curve =
                std::make_unique<AcGeLineSeg2d>(flat(edge.piece.start()), flat(edge.piece.end()));
        else if (edge.kind == Edge::kCircularArc)
            curve = circularArc(edge.piece, edge.clockwise);
        else
            curve = std::make_unique<PieceCurve>(
                edge.piece, edge.kind == Edge::kEllipticArc ? AcGe::kEllipArc2d : AcGe::kCurve2d,
                edge.clockwise);
        edges.append(curve.release());
        edgeTypes.append(edge.kind);
    }
    return Acad::eOk;
}
