#include "db/header_variables.h"

#include <algorithm>
#include <numbers>

#include "db/database.h"
#include "db/dxf_fields.h"
#include "db/line_weights.h"
#include "db/residence.h"

namespace headless {
namespace {

constexpr double kRadians = std::numbers::pi / 180.0;

/// Reads single settings, leaving those that the file does not name.
class HeaderReader {
public:
    HeaderReader(AcDbDatabase& db, AcDbDxfFiler& filer)
        : header_(db.headerVariables()), filer_(filer) {}

    void real(std::string_view name, double& setting, double factor = 1.0) const {
        if (const DxfTag* const tag = first(name)) setting = tag->real() * factor;
    }
    void positive(std::string_view name, double& setting) const {
        const DxfTag* const tag = first(name);
        if (tag == nullptr) return;
        if (tag->real() > 0.0)
            setting = tag->real();
        else
            filer_.report(*tag, "a scale or size that is not above 0; the default is taken");
    }
    void whole(std::string_view name, short& setting) const {
        if (const DxfTag* const tag = first(name)) setting = static_cast<short>(tag->integer());
    }
    void flag(std::string_view name, bool& setting) const {
        if (const DxfTag* const tag = first(name)) setting = tag->flag();
    }
    template <class P>
    void point(std::string_view name, P& setting) const {
        // A point in the plane may come with a height, which it has no place for.
        constexpr int kMostCoordinates = sizeof(P) / sizeof(double);
        for (const DxfTag& tag : header_.find(name)) {
            const int axis = tag.code / 10;
            if (axis >= 1 && axis <= kMostCoordinates) setCoordinate(setting, tag);
        }
    }
    void symbol(std::string_view name, AcRxClass* kind, AcDbObjectId& setting) const {
        if (const DxfTag* const tag = first(name)) setting = filer_.symbolId(kind, *tag);
    }
    void color(std::string_view name, AcCmColor& setting) const {
        if (const DxfTag* const tag = first(name))
            setting.setColorIndex(static_cast<int>(tag->integer()));
    }
    void lineWeight(std::string_view name, AcDb::LineWeight& setting) const {
        const DxfTag* const tag = first(name);
        if (tag != nullptr && isLineWeight(tag->integer()))
            setting = static_cast<AcDb::LineWeight>(tag->integer());
    }

private:
    const DxfTag* first(std::string_view name) const {
        const auto values = header_.find(name);
        return values.empty() ? nullptr : &values.front();
    }

    const HeaderVariables& header_;
    AcDbDxfFiler& filer_;
};

void readCurrent(const HeaderReader& header, DrawingSettings& settings) {
    header.symbol("$CLAYER", AcDbLayerTableRecord::desc(), settings.clayer);
    header.symbol("$CELTYPE", AcDbLinetypeTableRecord::desc(), settings.celtype);
    header.symbol("$TEXTSTYLE", AcDbTextStyleTableRecord::desc(), settings.textstyle);
    header.symbol("$DIMSTYLE", AcDbDimStyleTableRecord::desc(), settings.dimstyle);
    header.color("$CECOLOR", settings.cecolor);
    header.lineWeight("$CELWEIGHT", settings.celweight);
    header.positive("$CELTSCALE", settings.celtscale);
    header.real("$ELEVATION", settings.elevation);
    header.real("$THICKNESS", settings.thickness);
    header.positive("$TEXTSIZE", settings.textsize);
}

void readScales(const HeaderReader& header, DrawingSettings& settings) {
    header.positive("$LTSCALE", settings.ltscale);
    header.real("$DIMSCALE", settings.dimscale);
    header.real("$PDSIZE", settings.pdsize);
    header.whole("$PDMODE", settings.pdmode);
    header.whole("$INSUNITS", settings.insunits);
    header.whole("$MEASUREMENT", settings.measurement);
    header.whole("$LUNITS", settings.lunits);
    header.whole("$LUPREC", settings.luprec);
    header.whole("$AUNITS", settings.aunits);
    header.whole("$AUPREC", settings.auprec);
    header.real("$ANGBASE", settings.angbase, kRadians);
    header.flag("$ANGDIR", settings.angdir);
}

void readPlaces(const HeaderReader& header, DrawingSettings& settings) {
    header.point("$EXTMIN", settings.extmin);
    header.point("$EXTMAX", settings.extmax);
    header.point("$LIMMIN", settings.limmin);
    header.point("$LIMMAX", settings.limmax);
    header.point("$INSBASE", settings.insbase);
    header.point("$UCSORG", settings.ucsorg);
    header.point("$UCSXDIR", settings.ucsxdir);
    header.point("$UCSYDIR", settings.ucsydir);
    header.point("$PUCSORG", settings.pucsorg);
    header.point("$PUCSXDIR", settings.pucsxdir);
    header.point("$PUCSYDIR", settings.pucsydir);
    header.point("$PLIMMIN", settings.plimmin);
    header.point("$PLIMMAX", settings.plimmax);
}

void readModes(const HeaderReader& header, DrawingSettings& settings) {
    header.whole("$ATTMODE", settings.attmode);
    header.flag("$FILLMODE", settings.fillmode);
    header.flag("$MIRRTEXT", settings.mirrtext);
    header.flag("$PSLTSCALE", settings.psltscale);
    header.flag("$TILEMODE", settings.tilemode);
    header.flag("$LIMCHECK", settings.limcheck);
    header.flag("$LWDISPLAY", settings.lineWeightDisplay);
}

/// Styles of multilines stand in a dictionary, not in a table.
void readMlineStyle(AcDbDatabase& db, const AcDbDxfFiler& filer) {
    const auto* const styles = Residence::peek<AcDbDictionary>(db.mLStyleDictionaryId());
    const auto name = db.headerVariables().find("$CMLSTYLE");
    if (styles != nullptr && !name.empty())
        db.settingsForWrite().cmlstyle = styles->find(filer.text(name.front()));
}

} // namespace

void HeaderVariables::set(std::string_view name, std::span<const DxfTag> values) {
    auto known = byName_.find(name);
    if (known == byName_.end()) {
        known = byName_.emplace(name, variables_.size()).first;
        variables_.push_back({std::string(name), {}});
    }
    variables_[known->second].values.assign(values.begin(), values.end());
}

std::span<const DxfTag> HeaderVariables::find(std::string_view name) const {
    const auto known = byName_.find(name);
    if (known == byName_.end()) return {};
    return variables_[known->second].values;
}

const DxfTag* HeaderVariables::find(std::string_view name, int code) const {
    const auto values = find(name);
    const auto found = std::find_if(values.begin(), values.end(),
                                    [code](const DxfTag& tag) { return tag.code == code; });
    return found == values.end() ? nullptr : &*found;
}

void applyHeader(AcDbDatabase& db, AcDbDxfFiler& filer) {
    const HeaderReader header(db, filer);
    DrawingSettings& settings = db.settingsForWrite();
    readCurrent(header, settings);
    readScales(header, settings);
    readPlaces(header, settings);
    readModes(header, settings);
    readMlineStyle(db, filer);
    if (const auto seed = db.headerVariables().find("$HANDSEED"); !seed.empty())
        Residence::raiseHandleSeed(db, seed.front().handle());
}

} // namespace headless
