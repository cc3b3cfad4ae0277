#include "dxf/header_settings.h"

#include "db/dictionary.h"
#include "db/residence.h"

namespace headless {
namespace {

constexpr int kName = 9;

class SettingsWriter {
public:
    using IsOther = std::function<bool(AcDbObjectId)>;

    SettingsWriter(DxfOutput& to, const DrawingSettings& now, const DrawingSettings* before,
                   const IsOther& isOther)
        : to_(to), now_(now), before_(before), isOther_(isOther) {}

    template <class T>
    void put(std::string_view name, int code, T DrawingSettings::*member,
             DrawingVersion since = DrawingVersion::kR12) {
        const T& value = now_.*member;
        const bool changed = before_ == nullptr || differs(value, before_->*member);
        if (!changed || !to_.since(since)) return;
        to_.name(kName, name);
        putValue(code, value);
    }
    void putAngle(std::string_view name, double DrawingSettings::*member) {
        const double value = now_.*member;
        if (before_ != nullptr && before_->*member == value) return;
        to_.name(kName, name);
        to_.angle(50, value);
    }

private:
    template <class T>
    static bool differs(const T& a, const T& b) {
        return a != b;
    }
    static bool differs(const AcGePoint3d& a, const AcGePoint3d& b) {
        return a.x != b.x || a.y != b.y || a.z != b.z;
    }
    static bool differs(const AcGeVector3d& a, const AcGeVector3d& b) {
        return a.x != b.x || a.y != b.y || a.z != b.z;
    }
    static bool differs(const AcGePoint2d& a, const AcGePoint2d& b) {
        return a.x != b.x || a.y != b.y;
    }
    static bool differs(const AcCmColor& a, const AcCmColor& b) {
        return a.colorIndex() != b.colorIndex();
    }
    bool differs(AcDbObjectId a, AcDbObjectId b) const { return a != b || isOther_(a); }

    void putValue(int code, AcDbObjectId value) { to_.symbol(code, value); }
    void putValue(int code, double value) { to_.real(code, value); }
    void putValue(int code, const AcCmColor& value) { to_.integer(code, value.colorIndex()); }
    void putValue(int code, short value) { to_.integer(code, value); }
    void putValue(int code, bool value) { to_.integer(code, value ? 1 : 0); }
    void putValue(int code, AcDb::LineWeight value) { to_.integer(code, value); }
    void putValue(int code, const AcGePoint3d& value) { to_.point(code, value); }
    void putValue(int code, const AcGeVector3d& value) { to_.point(code, value); }
    void putValue(int code, const AcGePoint2d& value) { to_.point(code, value); }

    DxfOutput& to_;
    const DrawingSettings& now_;
    const DrawingSettings* before_;
    const IsOther& isOther_;
};

using Settings = DrawingSettings;

void putCurrent(SettingsWriter& to) {
    to.put("$CLAYER", 8, &Settings::clayer);
    to.put("$CELTYPE", 6, &Settings::celtype);
    to.put("$TEXTSTYLE", 7, &Settings::textstyle);
    to.put("$DIMSTYLE", 2, &Settings::dimstyle);
    to.put("$CECOLOR", 62, &Settings::cecolor);
    to.put("$CELWEIGHT", 370, &Settings::celweight, DrawingVersion::k2000);
    to.put("$CELTSCALE", 40, &Settings::celtscale, DrawingVersion::kR13);
    to.put("$ELEVATION", 40, &Settings::elevation);
    to.put("$THICKNESS", 40, &Settings::thickness);
    to.put("$TEXTSIZE", 40, &Settings::textsize);
}

void putScales(SettingsWriter& to) {
    to.put("$LTSCALE", 40, &Settings::ltscale);
    to.put("$DIMSCALE", 40, &Settings::dimscale);
    to.put("$PDSIZE", 40, &Settings::pdsize);
    to.put("$PDMODE", 70, &Settings::pdmode);
    to.put("$INSUNITS", 70, &Settings::insunits, DrawingVersion::k2000);
    to.put("$MEASUREMENT", 70, &Settings::measurement, DrawingVersion::kR14);
    to.put("$LUNITS", 70, &Settings::lunits);
    to.put("$LUPREC", 70, &Settings::luprec);
    to.put("$AUNITS", 70, &Settings::aunits);
    to.put("$AUPREC", 70, &Settings::auprec);
    to.putAngle("$ANGBASE", &Settings::angbase);
    to.put("$ANGDIR", 70, &Settings::angdir);
}

void putPlaces(SettingsWriter& to) {
    to.put("$EXTMIN", 10, &Settings::extmin);
    to.put("$EXTMAX", 10, &Settings::extmax);
    to.put("$LIMMIN", 10, &Settings::limmin);
    to.put("$LIMMAX", 10, &Settings::limmax);
    to.put("$INSBASE", 10, &Settings::insbase);
    to.put("$UCSORG", 10, &Settings::ucsorg);
    to.put("$UCSXDIR", 10, &Settings::ucsxdir);
    to.put("$UCSYDIR", 10, &Settings::ucsydir);
    to.put("$PUCSORG", 10, &Settings::pucsorg);
    to.put("$PUCSXDIR", 10, &Settings::pucsxdir);
    to.put("$PUCSYDIR", 10, &Settings::pucsydir);
    to.put("$PLIMMIN", 10, &Settings::plimmin);
    to.put("$PLIMMAX", 10, &Settings::plimmax);
}

void putModes(SettingsWriter& to) {
    to.put("$ATTMODE", 70, &Settings::attmode);
    to.put("$FILLMODE", 70, &Settings::fillmode);
    to.put("$MIRRTEXT", 70, &Settings::mirrtext);
    to.put("$PSLTSCALE", 70, &Settings::psltscale);
    to.put("$TILEMODE", 70, &Settings::tilemode);
    to.put("$LIMCHECK", 70, &Settings::limcheck);
    to.put("$LWDISPLAY", 290, &Settings::lineWeightDisplay, DrawingVersion::k2000);
}

/// Styles of multilines stand in a dictionary, not in a table.
void putMlineStyle(DxfOutput& to, AcDbDatabase& db, const DrawingSettings* before) {
    const AcDbObjectId style = db.cmlstyleID();
    const auto* const styles = Residence::peek<AcDbDictionary>(db.mLStyleDictionaryId());
    if (styles == nullptr || !to.since(DrawingVersion::kR13)) return;
    if (before != nullptr && before->cmlstyle == style) return;
    to.name(kName, "$CMLSTYLE");
    to.text(2, to.keep(std::wstring(styles->keyOf(style))));
}

} // namespace

void putSettings(DxfOutput& to, AcDbDatabase& db, const DrawingSettings* before,
                 const std::function<bool(AcDbObjectId)>& isOther) {
    SettingsWriter writer(to, db.settings(), before, isOther);
    putCurrent(writer);
    putScales(writer);
    putPlaces(writer);
    putModes(writer);
    putMlineStyle(to, db, before);
}

} // namespace headless
