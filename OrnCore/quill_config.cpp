#include "OrnCore/quill_config.h"

#include <cmath>
#include <string>

#include <dbapserv.h>
#include <dbsymtb.h>

#include "OrnCore/dimension_style_name.h"
#include "OrnCore/named_records.h"
#include "OrnCore/product_folder.h"

namespace {

CQuillCfgDll configuration;

AcDbDatabase* orWorking(AcDbDatabase* db) {
    return db != nullptr ? db : acdbHostApplicationServices()->workingDatabase();
}

/// The entry of a key, or null.
template <class Map>
const typename Map::mapped_type* entryOf(const Map& map, const typename Map::key_type& key) {
    const auto found = map.find(key);
    return found == map.end() ? nullptr : &found->second;
}

/// A file's bytes; nothing when it cannot be read.
std::optional<std::string> bytesOf(const CString& path) {
    CFile file;
    if (file.Open(path, CFile::modeRead | CFile::shareDenyWrite) == FALSE) return std::nullopt;
    try {
        std::string bytes(static_cast<std::size_t>(file.GetLength()), '\0');
        bytes.resize(file.Read(bytes.data(), static_cast<UINT>(bytes.size())));
        return bytes;
    } catch (CException* failure) {
        failure->Delete();
        return std::nullopt;
    }
}

void fillLinetype(AcDbLinetypeTableRecord& record, const quill::Linetype& linetype) {
    record.setComments(linetype.description);
    record.setNumDashes(static_cast<int>(linetype.dashes.size()));
    double length = 0.0;
    for (std::size_t i = 0; i < linetype.dashes.size(); ++i) {
        record.setDashLengthAt(static_cast<int>(i), linetype.dashes[i]);
        length += std::abs(linetype.dashes[i]);
    }
    record.setPatternLength(length);
}

AcDbObjectId linetypeIn(AcDbDatabase& db, const quill::Settings& settings, const CString& name) {
    if (const quill::Linetype* const linetype = entryOf(settings.linetypes, name)) {
        const auto fill = [&](AcDbLinetypeTableRecord& record) { fillLinetype(record, *linetype); };
        orncore::findOrAdd<AcDbLinetypeTable, AcDbLinetypeTableRecord>(db.linetypeTableId(), name,
                                                                       fill);
    }
    return orncore::linetypeOrContinuous(db, name);
}

void fillLayer(AcDbLayerTableRecord& record, const quill::Layer& layer, AcDbObjectId linetype) {
    AcCmColor color;
    color.setColorIndex(layer.color);
    record.setColor(color);
    record.setLinetypeObjectId(linetype);
    record.setLineWeight(static_cast<AcDb::LineWeight>(layer.lineWeight));
    record.setIsPlottable(layer.plots);
}

void fillTextStyle(AcDbTextStyleTableRecord& record, const quill::TextStyle& style) {
    record.setFileName(style.font);
    record.setBigFontFileName(style.bigFont);
    record.setXScale(style.widthFactor);
}

// Texts stand above their line and along it, and zeros after the last decimal are left out: how
// buildings are dimensioned.
void fillDimensionStyle(AcDbDimStyleTableRecord& record, const quill::DimensionStyle& style,
                        AcDbObjectId textStyle) {
    constexpr int kAboveLine = 1;
    constexpr int kNoTrailingZeros = 8;
    record.setDimscale(style.scale);
    record.setDimtxt(style.textHeight);
    record.setDimasz(style.tick);
    record.setDimtsz(style.tick);
    record.setDimexo(style.originGap);
    record.setDimexe(style.beyond);
    record.setDimgap(style.textGap);
    record.setDimdli(style.spacing);
    record.setDimdec(style.decimals);
    record.setDimtad(kAboveLine);
    record.setDimzin(kNoTrailingZeros);
    record.setDimtih(false);
    record.setDimtoh(false);
    if (!textStyle.isNull()) record.setDimtxsty(textStyle);
}

/// The settings in a file; none, and a message, when there are none in it.
quill::Settings readFile(const CString& path) {
    const std::optional<std::string> bytes = bytesOf(path);
    if (!bytes) {
        AfxMessageBox(L"产品配置文件无法读取：" + path);
        return {};
    }
    quill::Reading reading = quill::readSettings(*bytes);
    if (reading.problem) AfxMessageBox(L"产品配置文件有误：" + path + L"\n" + *reading.problem);
    return std::move(reading.settings);
}

} // namespace

CQuillCfgDll* g_pQuillCfgSet = &configuration;

const quill::Settings& CQuillCfgDll::settings() {
    const CString path = orncore::productFolder() + L"\\prg\\quillConfig.json";
    if (path != path_) {
        path_ = path;
        settings_ = readFile(path);
    }
    return settings_;
}

void CQuillCfgDll::Reset() {
    path_.Empty();
    settings_ = {};
}

const std::map<unsigned int, quill::Layer>& CQuillCfgDll::GetLayers() { return settings().layers; }

CString CQuillCfgDll::GetLayerName(unsigned int code) {
    const quill::Layer* const layer = entryOf(settings().layers, code);
    return layer == nullptr ? CString() : layer->name;
}

AcDbObjectId CQuillCfgDll::GetLayerId(unsigned int code, AcDbDatabase* db) {
    db = orWorking(db);
    const quill::Layer* const layer = entryOf(settings().layers, code);
    if (db == nullptr || layer == nullptr) return AcDbObjectId::kNull;
    return orncore::findOrAdd<AcDbLayerTable, AcDbLayerTableRecord>(
        db->layerTableId(), layer->name, [&](AcDbLayerTableRecord& record) {
            fillLayer(record, *layer, linetypeIn(*db, settings_, layer->linetype));
        });
}

AcDbObjectId CQuillCfgDll::GetTextStyleId(unsigned int code, AcDbDatabase* db) {
    db = orWorking(db);
    const quill::TextStyle* const style = entryOf(settings().textStyles, code);
    if (db == nullptr || style == nullptr) return AcDbObjectId::kNull;
    return orncore::findOrAdd<AcDbTextStyleTable, AcDbTextStyleTableRecord>(
        db->textStyleTableId(), style->name,
        [&](AcDbTextStyleTableRecord& record) { fillTextStyle(record, *style); });
}

AcDbObjectId CQuillCfgDll::GetDimStyleId(int first, int second, int third, AcDbDatabase* db) {
    db = orWorking(db);
    const quill::DimensionStyle* const style =
        entryOf(settings().dimensionStyles, {first, second, third});
    if (db == nullptr || style == nullptr) return AcDbObjectId::kNull;
    return orncore::findOrAdd<AcDbDimStyleTable, AcDbDimStyleTableRecord>(
        db->dimStyleTableId(), orncore::dimensionStyleName(first, second),
        [&](AcDbDimStyleTableRecord& record) {
            fillDimensionStyle(record, *style, GetTextStyleId(style->textStyle, db));
        });
}
