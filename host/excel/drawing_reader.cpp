#include "excel/drawing_reader.h"

#include "excel/image_info.h"

namespace headless::excel {
namespace {

constexpr double kEmuOfPoint = 12700.0;

void readPicture(FileContents& contents, Sheet& sheet, const pugi::xml_node& anchor,
                 const pugi::xml_node& node, const std::vector<Relation>& relations) {
    const pugi::xml_node blip = child(child(node, "blipFill"), "blip");
    const Relation* found = findId(relations, linkAttribute(blip, "embed").value());
    const auto bytes = found == nullptr ? std::nullopt : contents.package.read(found->target);
    const pugi::xml_node from = child(anchor, "from");
    if (!bytes || !imageInfo(*bytes) || !from) {
        contents.foreign.add("pictures of other kinds");
        return;
    }
    const pugi::xml_node crop = child(child(node, "blipFill"), "srcRect");
    const pugi::xml_node place = child(child(node, "spPr"), "xfrm");
    if (crop.first_attribute() || place.attribute("rot").as_int() != 0 ||
        place.attribute("flipH").as_bool() || place.attribute("flipV").as_bool())
        contents.foreign.add("cropped or turned pictures");
    Picture picture;
    picture.id = sheet.nextPictureId++;
    picture.bytes = *bytes;
    const pugi::xml_node properties = child(node, "nvPicPr");
    const pugi::xml_node names = child(properties, "cNvPr");
    if (child(names, "hlinkClick")) contents.foreign.add("links of pictures");
    picture.name = names.attribute("descr").as_string(names.attribute("name").value());
    picture.lockAspectRatio =
        child(child(properties, "cNvPicPr"), "picLocks").attribute("noChangeAspect").as_bool();
    picture.row = child(from, "row").text().as_int() + 1;
    picture.column = child(from, "col").text().as_int() + 1;
    picture.leftInCell = child(from, "colOff").text().as_double() / kEmuOfPoint;
    picture.topInCell = child(from, "rowOff").text().as_double() / kEmuOfPoint;
    pugi::xml_node size = child(anchor, "ext");
    if (!size) size = child(child(child(node, "spPr"), "xfrm"), "ext");
    picture.width = size.attribute("cx").as_double() / kEmuOfPoint;
    picture.height = size.attribute("cy").as_double() / kEmuOfPoint;
    sheet.pictures.push_back(std::move(picture));
}

} // namespace

void readDrawing(FileContents& contents, Sheet& sheet, const std::string& part) {
    const pugi::xml_document document = contents.package.readXml(part);
    const auto relations = readRelations(contents.package, part);
    for (const pugi::xml_node& anchor : document.document_element().children()) {
        const pugi::xml_node picture = child(anchor, "pic");
        if (picture) {
            readPicture(contents, sheet, anchor, picture, relations);
        } else if (child(anchor, "graphicFrame")) {
            contents.foreign.add("charts");
        } else {
            contents.foreign.add("drawn shapes");
        }
    }
}

} // namespace headless::excel
