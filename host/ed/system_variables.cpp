#include "ed/system_variables.h"

#include <unordered_map>

#include "db/database.h"
#include "db/fault_hook.h"
#include "db/resbuf.h"
#include "db/state.h"
#include "ed/state.h"
#include "ed/variable_table.h"
#include "win/casing.h"

namespace headless {

const VariableSpec* findVariable(std::wstring_view name) {
    using Index = std::unordered_map<std::wstring_view, const VariableSpec*, NameHash, NameEqual>;
    static const Index index = [] {
        Index result;
        for (const auto& table : {sessionVariables(), drawingVariables(), viewVariables()}) {
            for (const VariableSpec& spec : table)
                result.emplace(spec.name, &spec);
        }
        return result;
    }();
    const auto found = index.find(name);
    return found == index.end() ? nullptr : found->second;
}

namespace {

AcDbDatabase* workingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

/// The value as one of the type of `like`, where such a value may serve; nothing where not.
std::optional<VariableValue> converted(const VariableValue& value, const VariableValue& like) {
    if (value.index() == like.index()) return value;
    const auto* small = std::get_if<Adesk::Int16>(&value);
    const auto* large = std::get_if<Adesk::Int32>(&value);
    const auto* flat = std::get_if<AcGePoint2d>(&value);
    const auto* spatial = std::get_if<AcGePoint3d>(&value);
    if (std::holds_alternative<double>(like)) {
        if (small != nullptr) return double{static_cast<double>(*small)};
        if (large != nullptr) return double{static_cast<double>(*large)};
    }
    if (std::holds_alternative<Adesk::Int32>(like) && small != nullptr) {
        return Adesk::Int32{*small};
    }
    if (std::holds_alternative<Adesk::Int16>(like) && large != nullptr) {
        const auto cut = static_cast<Adesk::Int16>(*large);
        if (cut == *large) return cut;
    }
    if (std::holds_alternative<AcGePoint3d>(like) && flat != nullptr) {
        return AcGePoint3d(flat->x, flat->y, 0.0);
    }
    if (std::holds_alternative<AcGePoint2d>(like) && spatial != nullptr) {
        return AcGePoint2d(spatial->x, spatial->y);
    }
    return std::nullopt;
}

std::optional<double> numberOf(const VariableValue& value) {
    if (const auto* number = std::get_if<Adesk::Int16>(&value)) return *number;
    if (const auto* number = std::get_if<Adesk::Int32>(&value)) return *number;
    if (const auto* number = std::get_if<double>(&value)) return *number;
    return std::nullopt;
}

bool isInRange(const VariableSpec& spec, const VariableValue& value) {
    const auto number = numberOf(value);
    return !number || (*number >= spec.low && *number <= spec.high);
}

/// Variables whose value is what the session is doing.
std::optional<VariableValue> liveValue(const VariableSpec& spec) {
    const CommandRunner& runner = EdState::current().runner;
    const std::wstring_view name = spec.name;
    if (name == L"CMDNAMES") return runner.activeNames();
    if (name == L"CMDACTIVE")
        return Adesk::Int16{runner.isQuiescent() ? Adesk::Int16{0} : Adesk::Int16{1}};
    return std::nullopt;
}

} // namespace

std::optional<VariableValue> SystemVariables::get(std::wstring_view name) const {
    const VariableSpec* spec = findVariable(name);
    if (spec == nullptr) return std::nullopt;
    if (spec->read != nullptr) {
        AcDbDatabase* database = workingDatabase();
        if (database == nullptr) return std::nullopt;
        return spec->read(*database);
    }
    if (auto live = liveValue(*spec)) return live;
    const auto changed = changed_.find(spec);
    return changed == changed_.end() ? spec->initial : changed->second;
}

SetOutcome SystemVariables::set(std::wstring_view name, const VariableValue& value) {
    const VariableSpec* spec = findVariable(name);
    if (spec == nullptr) return SetOutcome::unknown;
    if (spec->readOnly) return SetOutcome::readOnly;
    const auto typed = converted(value, spec->initial);
    if (!typed) return SetOutcome::wrongType;
    if (!isInRange(*spec, *typed)) return SetOutcome::outOfRange;
    if (spec->write == nullptr) {
        changed_.insert_or_assign(spec, *typed);
        return SetOutcome::done;
    }
    AcDbDatabase* database = workingDatabase();
    return database == nullptr ? SetOutcome::noDrawing : spec->write(*database, *typed);
}

void SystemVariables::assign(std::wstring_view name, VariableValue value) {
    changed_.insert_or_assign(findVariable(name), std::move(value));
}

double SystemVariables::real(std::wstring_view name) const {
    const auto value = get(name);
    return value ? std::get<double>(*value) : 0.0;
}

AcGePoint3d SystemVariables::point(std::wstring_view name) const {
    const auto value = get(name);
    return value ? std::get<AcGePoint3d>(*value) : AcGePoint3d();
}

void setHostError(HostError error) {
    EdState::current().variables.assign(L"ERRNO", static_cast<Adesk::Int16>(error));
}

namespace {

/// Writes a value into a result buffer of the caller.
struct IntoBuffer {
    resbuf& buffer;

    void operator()(Adesk::Int16 value) const { give(RTSHORT).rint = value; }
    void operator()(Adesk::Int32 value) const { give(RTLONG).rlong = value; }
    void operator()(double value) const { give(RTREAL).rreal = value; }
    void operator()(const std::wstring& value) const {
        give(RTSTR).rstring = acutNewString(value.c_str());
    }
    void operator()(const AcGePoint2d& value) const { givePoint(RTPOINT, value.x, value.y, 0.0); }
    void operator()(const AcGePoint3d& value) const {
        givePoint(RT3DPOINT, value.x, value.y, value.z);
    }

private:
    ads_u_val& give(short type) const {
        buffer.restype = type;
        return buffer.resval;
    }
    void givePoint(short type, double x, double y, double z) const {
        double* point = give(type).rpoint;
        point[0] = x;
        point[1] = y;
        point[2] = z;
    }
};

std::optional<VariableValue> valueOf(const resbuf& buffer) {
    const ads_u_val& value = buffer.resval;
    switch (buffer.restype) {
    case RTSHORT:
        return Adesk::Int16{value.rint};
    case RTLONG:
        return Adesk::Int32{value.rlong};
    case RTREAL:
    case RTANG:
    case RTORINT:
        return value.rreal;
    case RTSTR:
        if (value.rstring == nullptr) return std::nullopt;
        return std::wstring(value.rstring);
    case RTPOINT:
        return AcGePoint2d(value.rpoint[0], value.rpoint[1]);
    case RT3DPOINT:
        return AcGePoint3d(value.rpoint[0], value.rpoint[1], value.rpoint[2]);
    default:
        return std::nullopt;
    }
}

HostError errorOf(SetOutcome outcome) {
    switch (outcome) {
    case SetOutcome::readOnly:
        return HostError::readOnlyVariable;
    case SetOutcome::outOfRange:
        return HostError::outOfRange;
    case SetOutcome::badLayer:
        return HostError::badLayerName;
    case SetOutcome::badLinetype:
        return HostError::badLinetypeName;
    case SetOutcome::badColor:
        return HostError::badColorName;
    case SetOutcome::badTextStyle:
        return HostError::badTextStyleName;
    default:
        return HostError::none;
    }
}

} // namespace
} // namespace headless

int acedGetVar(const ACHAR* name, resbuf* result) {
    if (name == nullptr || result == nullptr) return RTERROR;
    const auto value = headless::EdState::current().variables.get(name);
    if (!value || headless::FaultHook::fails("acedGetVar")) return RTERROR;
    std::visit(headless::IntoBuffer{*result}, *value);
    return RTNORM;
}

int acedSetVar(const ACHAR* name, const resbuf* value) {
    if (name == nullptr || value == nullptr) return RTERROR;
    const auto given = headless::valueOf(*value);
    if (!given || headless::FaultHook::fails("acedSetVar")) return RTERROR;
    const auto outcome = headless::EdState::current().variables.set(name, *given);
    if (outcome == headless::SetOutcome::done) return RTNORM;
    headless::setHostError(headless::errorOf(outcome));
    return RTERROR;
}
