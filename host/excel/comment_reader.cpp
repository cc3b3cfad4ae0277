#include "excel/comment_reader.h"

#include "excel/file_texts.h"

namespace headless::excel {
namespace {

/// Which comments stay open is told only where their boxes are drawn.
void readVisibility(FileContents& contents, Sheet& sheet, const std::string& part) {
    const auto bytes = contents.package.read(part);
    pugi::xml_document document;
    // Boxes may be drawn in markup that is no XML; then they count as closed.
    if (!bytes || !document.load_buffer(bytes->data(), bytes->size())) return;
    for (const pugi::xml_node& shape : document.document_element().children()) {
        const pugi::xml_node data = child(shape, "ClientData");
        if (!child(data, "Visible")) continue;
        const auto comment = sheet.comments.find(
            {child(data, "Row").text().as_int() + 1, child(data, "Column").text().as_int() + 1});
        if (comment != sheet.comments.end()) comment->second.visible = true;
    }
}

} // namespace

void readComments(FileContents& contents, Sheet& sheet, const std::vector<Relation>& relations) {
    const Relation* found = findKind(relations, "comments");
    if (found == nullptr) return;
    const pugi::xml_document document = contents.package.readXml(found->target);
    std::vector<std::string> authors;
    for (const pugi::xml_node& node : child(document.document_element(), "authors").children())
        authors.emplace_back(node.text().get());
    for (const pugi::xml_node& node :
         child(document.document_element(), "commentList").children()) {
        const auto place = parseArea(node.attribute("ref").value());
        if (!place) continue;
        Comment comment;
        // Comments always have a font of their own.
        comment.text = readText(child(node, "text"), contents.letterFonts).text;
        const auto author = static_cast<std::size_t>(node.attribute("authorId").as_uint());
        if (author < authors.size()) comment.author = authors[author];
        sheet.comments[{place->top, place->left}] = comment;
    }
    if (const Relation* drawing = findKind(relations, "vmlDrawing")) {
        readVisibility(contents, sheet, drawing->target);
    }
}

} // namespace headless::excel
