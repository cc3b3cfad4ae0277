#include "excel/ods_views.h"

#include "excel/package_change.h"
#include "excel/zip_package.h"

namespace headless::excel {
namespace {

constexpr const char* kPart = "settings.xml";

void addItem(pugi::xml_node parent, const char* name, const char* type, const std::string& value) {
    pugi::xml_node item = parent.append_child("config:config-item");
    item.append_attribute("config:name") = name;
    item.append_attribute("config:type") = type;
    item.text() = value.c_str();
}

pugi::xml_node addNamed(pugi::xml_node parent, const char* kind, const char* name) {
    pugi::xml_node made = parent.append_child(kind);
    made.append_attribute("config:name") = name;
    return made;
}

void addView(pugi::xml_node tables, const Sheet& sheet) {
    pugi::xml_node entry = addNamed(tables, "config:config-item-map-entry", sheet.name.c_str());
    const SheetView& view = sheet.view;
    const auto freeze = [&](const char* mode, const char* position, const char* start, int count) {
        constexpr const char* kFrozen = "2";
        addItem(entry, mode, "short", count > 0 ? kFrozen : "0");
        addItem(entry, position, "int", std::to_string(count));
        addItem(entry, start, "int", std::to_string(count));
    };
    freeze("HorizontalSplitMode", "HorizontalSplitPosition", "PositionRight", view.frozenColumns);
    freeze("VerticalSplitMode", "VerticalSplitPosition", "PositionBottom", view.frozenRows);
    addItem(entry, "ZoomType", "short", "0");
    addItem(entry, "ZoomValue", "int", std::to_string(view.zoom));
    addItem(entry, "ShowGrid", "boolean", view.gridlines ? "true" : "false");
}

/// The element of that name attribute below another.
pugi::xml_node named(const pugi::xml_node& parent, std::string_view name) {
    for (const pugi::xml_node& node : parent.children())
        if (node.attribute("config:name").value() == name) return node;
    return {};
}

pugi::xml_node viewSettings(const pugi::xml_document& document) {
    return named(child(document.document_element(), "settings"), "ooo:view-settings");
}

} // namespace

void writeOdsViews(const Workbook& workbook, const std::string& path) {
    std::string bytes;
    {
        ZipPackage written(path);
        const pugi::xml_document document = written.readXml(kPart);
        pugi::xml_node views =
            addNamed(viewSettings(document), "config:config-item-map-indexed", "Views");
        pugi::xml_node window = views.append_child("config:config-item-map-entry");
        addItem(window, "ViewId", "string", "view1");
        addItem(window, "ActiveTable", "string", workbook.sheets.at(workbook.activeSheet)->name);
        pugi::xml_node tables = addNamed(window, "config:config-item-map-named", "Tables");
        for (const auto& sheet : workbook.sheets)
            addView(tables, *sheet);
        bytes = xmlText(document);
    }
    PackageChange change(path);
    change.replace(kPart, bytes);
    change.commit();
}

void takeOdsGridLines(Workbook& workbook, const std::string& path) {
    ZipPackage file(path);
    const pugi::xml_document document = file.readXml(kPart);
    const pugi::xml_node window =
        child(named(viewSettings(document), "Views"), "config-item-map-entry");
    for (const pugi::xml_node& entry : named(window, "Tables").children()) {
        const auto sheet = workbook.findSheet(entry.attribute("config:name").value());
        const pugi::xml_node item = named(entry, "ShowGrid");
        if (sheet != nullptr && item) sheet->view.gridlines = item.text().as_bool();
    }
}

} // namespace headless::excel
