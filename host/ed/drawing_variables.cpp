// System variables that belong to the drawing.
#include <algorithm>
#include <filesystem>

#include "db/database.h"
#include "db/residence.h"
#include "db/undo_journal.h"
#include "ed/parse_input.h"
#include "ed/state.h"
#include "ed/variable_table.h"
#include "win/casing.h"
#include "win/native_path.h"

namespace headless {
namespace {

using Short = Adesk::Int16;
using Text = std::wstring;

constexpr bool kReadOnly = true;
constexpr bool kWritable = false;
constexpr double kAboveZero = std::numeric_limits<double>::min();

VariableValue valueOf(double setting) { return setting; }
VariableValue valueOf(short setting) { return Short{setting}; }
VariableValue valueOf(bool setting) { return setting ? Short{1} : Short{0}; }
VariableValue valueOf(const AcGePoint2d& setting) { return setting; }
VariableValue valueOf(const AcGePoint3d& setting) { return setting; }

template <auto Setting>
VariableValue readSetting(AcDbDatabase& database) {
    return valueOf(database.settings().*Setting);
}

template <auto Setting>
SetOutcome writeSetting(AcDbDatabase& database, const VariableValue& value) {
    auto& setting = database.settingsForWrite().*Setting;
    using Type = std::remove_reference_t<decltype(setting)>;
    if constexpr (std::is_same_v<Type, bool>) {
        setting = std::get<Short>(value) != 0;
    } else {
        setting = std::get<Type>(value);
    }
    return SetOutcome::done;
}

/// A variable that is one of the drawing's settings.
template <auto Setting>
VariableSpec setting(const wchar_t* name, double low = std::numeric_limits<double>::lowest(),
                     double high = std::numeric_limits<double>::max()) {
    using Type = std::remove_cvref_t<decltype(std::declval<DrawingSettings&>().*Setting)>;
    return {
        name, valueOf(Type{}), kWritable, low, high, readSetting<Setting>, writeSetting<Setting>};
}

template <auto Setting>
VariableSpec toggle(const wchar_t* name) {
    return setting<Setting>(name, 0, 1);
}

template <auto Setting>
VariableSpec fixed(const wchar_t* name) {
    return {name, AcGePoint3d(), kReadOnly, 0, 0, readSetting<Setting>};
}

/// The name of the record that a setting points to; empty when there is none.
template <auto Setting>
VariableValue readName(AcDbDatabase& database) {
    const DrawingSettings& settings = database.settings();
    const auto* record = Residence::peek<AcDbSymbolTableRecord>(settings.*Setting);
    return record == nullptr ? Text() : record->nameOf();
}

AcDbObjectId recordNamed(AcDbObjectId table, const VariableValue& name) {
    const auto* records = Residence::peek<AcDbSymbolTable>(table);
    return records == nullptr ? AcDbObjectId() : records->findRecord(std::get<Text>(name));
}

SetOutcome writeLayer(AcDbDatabase& database, const VariableValue& value) {
    const AcDbObjectId layer = recordNamed(database.layerTableId(), value);
    return database.setClayer(layer) == Acad::eOk ? SetOutcome::done : SetOutcome::badLayer;
}

SetOutcome writeLinetype(AcDbDatabase& database, const VariableValue& value) {
    const AcDbObjectId linetype = recordNamed(database.linetypeTableId(), value);
    return database.setCeltype(linetype) == Acad::eOk ? SetOutcome::done : SetOutcome::badLinetype;
}

SetOutcome writeTextStyle(AcDbDatabase& database, const VariableValue& value) {
    const AcDbObjectId style = recordNamed(database.textStyleTableId(), value);
    return database.setTextstyle(style) == Acad::eOk ? SetOutcome::done : SetOutcome::badTextStyle;
}

VariableValue readColor(AcDbDatabase& database) {
    const AcCmColor color = database.cecolor();
    if (color.isByLayer()) return Text(L"BYLAYER");
    if (color.isByBlock()) return Text(L"BYBLOCK");
    if (!color.isByColor()) return std::to_wstring(color.colorIndex());
    return L"RGB:" + std::to_wstring(color.red()) + L"," + std::to_wstring(color.green()) + L"," +
           std::to_wstring(color.blue());
}

SetOutcome writeColor(AcDbDatabase& database, const VariableValue& value) {
    const Text& name = std::get<Text>(value);
    AcCmColor color;
    if (equalNoCase(name, L"BYBLOCK")) {
        color.setColorMethod(AcCmEntityColor::kByBlock);
    } else if (!equalNoCase(name, L"BYLAYER")) {
        const auto index = parseInteger(name);
        if (!index || *index < 1 || *index > 255) return SetOutcome::badColor;
        color.setColorIndex(*index);
    }
    database.setCecolor(color);
    return SetOutcome::done;
}

VariableValue readLineWeight(AcDbDatabase& database) {
    return static_cast<Short>(database.celweight());
}

SetOutcome writeLineWeight(AcDbDatabase& database, const VariableValue& value) {
    const auto weight = static_cast<AcDb::LineWeight>(std::get<Short>(value));
    return database.setCelweight(weight) == Acad::eOk ? SetOutcome::done : SetOutcome::outOfRange;
}

const AcApDocument* documentOf(const AcDbDatabase& database) {
    return EdState::current().documents.ofDatabase(&database);
}

VariableValue readDrawingName(AcDbDatabase& database) {
    const AcApDocument* document = documentOf(database);
    return document == nullptr ? Text() : Text(document->docTitle());
}

/// The folder with its last separator; that of the process for a drawing without a file.
VariableValue readDrawingFolder(AcDbDatabase& database) {
    const AcApDocument* document = documentOf(database);
    if (document == nullptr || !document->isNamedDrawing()) {
        std::error_code ignored;
        return platformPath((std::filesystem::current_path(ignored) / "").string());
    }
    const Text path = document->fileName();
    return path.substr(0, path.size() - Text(document->docTitle()).size());
}

VariableValue readIsNamed(AcDbDatabase& database) {
    const AcApDocument* document = documentOf(database);
    return valueOf(document != nullptr && document->isNamedDrawing());
}

/// 1 recording, 2 for the last operation only, 4 menus are grouped, 8 in a group.
VariableValue readUndoControl(AcDbDatabase& database) {
    const UndoJournal* const journal = database.undoJournal();
    if (journal == nullptr || !journal->isRecording()) return Short{0};
    const int bits = 1 + (journal->keepsOne() ? 2 : 0) + (journal->isAutomatic() ? 4 : 0) +
                     (journal->inGroup() ? 8 : 0);
    return static_cast<Short>(bits);
}

VariableValue readUndoMarks(AcDbDatabase& database) {
    const UndoJournal* const journal = database.undoJournal();
    return static_cast<Short>(journal == nullptr ? 0 : journal->markCount());
}

} // namespace

std::span<const VariableSpec> drawingVariables() {
    using S = DrawingSettings;
    static const VariableSpec specs[] = {
        setting<&S::angbase>(L"ANGBASE"),
        toggle<&S::angdir>(L"ANGDIR"),
        setting<&S::attmode>(L"ATTMODE", 0, 2),
        setting<&S::aunits>(L"AUNITS", 0, 4),
        setting<&S::auprec>(L"AUPREC", 0, 8),
        {L"CECOLOR", Text(), kWritable, 0, 0, readColor, writeColor},
        setting<&S::celtscale>(L"CELTSCALE", kAboveZero),
        {L"CELTYPE", Text(), kWritable, 0, 0, readName<&S::celtype>, writeLinetype},
        {L"CELWEIGHT", Short{0}, kWritable, -3, 211, readLineWeight, writeLineWeight},
        {L"CLAYER", Text(), kWritable, 0, 0, readName<&S::clayer>, writeLayer},
        setting<&S::dimscale>(L"DIMSCALE", 0),
        {L"DIMSTYLE", Text(), kReadOnly, 0, 0, readName<&S::dimstyle>},
        {L"DWGNAME", Text(), kReadOnly, 0, 0, readDrawingName},
        {L"DWGPREFIX", Text(), kReadOnly, 0, 0, readDrawingFolder},
        {L"DWGTITLED", Short{0}, kReadOnly, 0, 1, readIsNamed},
        setting<&S::elevation>(L"ELEVATION"),
        fixed<&S::extmax>(L"EXTMAX"),
        fixed<&S::extmin>(L"EXTMIN"),
        toggle<&S::fillmode>(L"FILLMODE"),
        setting<&S::insbase>(L"INSBASE"),
        setting<&S::insunits>(L"INSUNITS", 0, 20),
        toggle<&S::limcheck>(L"LIMCHECK"),
        setting<&S::limmax>(L"LIMMAX"),
        setting<&S::limmin>(L"LIMMIN"),
        setting<&S::ltscale>(L"LTSCALE", kAboveZero),
        setting<&S::lunits>(L"LUNITS", 1, 5),
        setting<&S::luprec>(L"LUPREC", 0, 8),
        toggle<&S::lineWeightDisplay>(L"LWDISPLAY"),
        setting<&S::measurement>(L"MEASUREMENT", 0, 1),
        toggle<&S::mirrtext>(L"MIRRTEXT"),
        setting<&S::pdmode>(L"PDMODE", 0, 100),
        setting<&S::pdsize>(L"PDSIZE"),
        toggle<&S::psltscale>(L"PSLTSCALE"),
        setting<&S::textsize>(L"TEXTSIZE", kAboveZero),
        {L"TEXTSTYLE", Text(), kWritable, 0, 0, readName<&S::textstyle>, writeTextStyle},
        setting<&S::thickness>(L"THICKNESS"),
        {L"UNDOCTL", Short{0}, kReadOnly, 0, 0, readUndoControl},
        {L"UNDOMARKS", Short{0}, kReadOnly, 0, 0, readUndoMarks},
    };
    return specs;
}

} // namespace headless
