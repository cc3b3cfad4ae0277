#include "info_output.h"

#include "OrnBoard/aligned_table.h"
#include "argument_text.h"
#include "json_output.h"
#include "win/code_page.h"

namespace orn {
namespace {

using board::Align;
using board::TableRow;

CString counted(std::size_t count) { return wide(std::to_string(count)); }

void printAligned(std::ostream& out, const std::vector<TableRow>& rows,
                  const std::vector<Align>& alignment) {
    out << headless::toUtf8(board::alignedTable(rows, alignment).GetString());
}

std::string joined(const TypeCounts& counts) {
    std::string text;
    for (const auto& [type, count] : counts) {
        if (!text.empty()) text += ", ";
        text += std::to_string(count) + " " + type;
    }
    return text.empty() ? "empty" : text;
}

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + name;
    return text.empty() ? "none" : text;
}

void printCounts(std::ostream& out, const char* heading, const TypeCounts& counts) {
    std::vector<TableRow> rows = {{wide(heading), L"Count"}};
    for (const auto& [name, count] : counts)
        rows.push_back({wide(name), counted(count)});
    out << '\n';
    printAligned(out, rows, {Align::kLeft, Align::kRight});
}

void printBlocks(std::ostream& out, const char* heading, const std::vector<BlockInfo>& blocks) {
    if (blocks.empty()) return;
    std::vector<TableRow> rows = {{wide(heading), L"Entities"}};
    for (const BlockInfo& block : blocks)
        rows.push_back({wide(block.name), wide(joined(block.entities))});
    out << '\n';
    printAligned(out, rows, {});
}

std::string stateOf(const LayerInfo& layer) {
    std::vector<std::string> states;
    if (layer.off) states.emplace_back("off");
    if (layer.frozen) states.emplace_back("frozen");
    if (layer.locked) states.emplace_back("locked");
    if (!layer.plot) states.emplace_back("not plotted");
    return states.empty() ? "" : joined(states);
}

void printLayers(std::ostream& out, const DrawingInfo& info) {
    std::vector<TableRow> rows = {{L"Layer", L"Entities", L"Color", L"Linetype", L"State"}};
    for (const LayerInfo& layer : info.layers) {
        const auto count = info.byLayer.find(layer.name);
        rows.push_back({wide(layer.name), counted(count == info.byLayer.end() ? 0 : count->second),
                        wide(std::to_string(layer.color)), wide(layer.linetype),
                        wide(stateOf(layer))});
    }
    out << '\n';
    printAligned(out, rows, {Align::kLeft, Align::kRight, Align::kRight});
}

Json::Value toJson(const TypeCounts& counts) {
    Json::Value object(Json::objectValue);
    for (const auto& [type, count] : counts)
        object[type] = Json::UInt64(count);
    return object;
}

Json::Value toJson(const std::vector<BlockInfo>& blocks) {
    Json::Value object(Json::objectValue);
    for (const BlockInfo& block : blocks)
        object[block.name] = toJson(block.entities);
    return object;
}

Json::Value toJson(const std::vector<std::string>& names) {
    Json::Value array(Json::arrayValue);
    for (const std::string& name : names)
        array.append(name);
    return array;
}

Json::Value toJson(const LayerInfo& layer) {
    Json::Value value;
    value["name"] = layer.name;
    value["off"] = layer.off;
    value["frozen"] = layer.frozen;
    value["locked"] = layer.locked;
    value["plot"] = layer.plot;
    value["color"] = layer.color;
    value["linetype"] = layer.linetype;
    value["lineweight"] = layer.lineweight;
    return value;
}

Json::Value toJson(const EntityInfo& entity) {
    Json::Value value;
    value["handle"] = entity.handle;
    value["type"] = entity.type;
    value["layer"] = entity.layer;
    value["extents"] = Json::Value();
    if (entity.extents)
        for (const double coordinate : *entity.extents)
            value["extents"].append(coordinate);
    return value;
}

CString coordinateText(double coordinate) {
    CString text;
    text.Format(L"%.3f", coordinate);
    return text;
}

} // namespace

void printTable(std::ostream& out, const DrawingInfo& info) {
    out << "Version " << info.version << '\n';
    printCounts(out, "Model space", info.entities);
    printBlocks(out, "Paper space", info.paperSpaces);
    printLayers(out, info);
    printBlocks(out, "Block", info.blocks);
    out << "\nLinetypes: " << joined(info.linetypes) << "\nText styles: " << joined(info.textStyles)
        << "\nDimension styles: " << joined(info.dimStyles) << '\n';
}

void printJson(std::ostream& out, const DrawingInfo& info) {
    Json::Value value;
    value["version"] = info.version;
    value["entities"] = toJson(info.entities);
    value["by_layer"] = toJson(info.byLayer);
    value["paper_spaces"] = toJson(info.paperSpaces);
    value["blocks"] = toJson(info.blocks);
    value["layers"] = Json::Value(Json::arrayValue);
    for (const LayerInfo& layer : info.layers)
        value["layers"].append(toJson(layer));
    value["linetypes"] = toJson(info.linetypes);
    value["text_styles"] = toJson(info.textStyles);
    value["dim_styles"] = toJson(info.dimStyles);
    printJson(out, value);
}

void printTable(std::ostream& out, const std::vector<EntityInfo>& entities) {
    std::vector<TableRow> rows = {
        {L"Handle", L"Type", L"Layer", L"X min", L"Y min", L"Z min", L"X max", L"Y max", L"Z max"}};
    for (const EntityInfo& entity : entities) {
        TableRow row = {wide(entity.handle), wide(entity.type), wide(entity.layer)};
        if (entity.extents)
            for (const double coordinate : *entity.extents)
                row.push_back(coordinateText(coordinate));
        rows.push_back(row);
    }
    printAligned(out, rows,
                 {Align::kRight, Align::kLeft, Align::kLeft, Align::kRight, Align::kRight,
                  Align::kRight, Align::kRight, Align::kRight, Align::kRight});
}

void printJson(std::ostream& out, const std::vector<EntityInfo>& entities) {
    Json::Value value;
    value["entities"] = Json::Value(Json::arrayValue);
    for (const EntityInfo& entity : entities)
        value["entities"].append(toJson(entity));
    printJson(out, value);
}

} // namespace orn
