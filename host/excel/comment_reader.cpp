#include "excel/comment_reader.h"

#include "excel/file_texts.h"

namespace headless::excel {
namespace {

/// Which comments stay open is told only where their boxes are drawn, beside controls of old.
void readBoxes(FileContents& contents, Sheet& sheet, const std::string& part) {
    const auto bytes = contents.package.read(part);
    pugi::xml_document document;
    // Boxes may be drawn in markup that is no XML; then they count as closed.
    if (!bytes || !document.load_buffer(bytes->data(), bytes->size())) return;
    for (const pugi::xml_node& shape : document.document_element().children()) {
        const pugi::xml_node data = child(shape, "ClientData");
        if (data && std::string_view(data.attribute("ObjectType").value()) != "Note")
            contents.foreign.add("controls");
        if (!child(data, "Visible")) continue;
        const auto comment = sheet.comments.find(
            {child(data, "Row").text().as_int() + 1, child(data, "Column").text().as_int() + 1});
        if (comment != sheet.comments.end()) comment->second.visible = true;
    }
}

void readTexts(FileContents& contents, Sheet& sheet, const std::string& part) {
    const pugi::xml_document document = contents.package.readXml(part);
    std::vector<std::string> authors;
    for (const pugi::xml_node& node : child(document.document_element(), "authors").children())
        authors.emplace_back(node.text().get());
    for (const pugi::xml_node& node :
         child(document.document_element(), "commentList").children()) {
        const auto place = parseArea(node.attribute("ref").value());
        if (!place) continue;
        Comment comment;
        // Comments always have a font of their own, but hardly ever two.
        const FileText read = readText(child(node, "text"), LetterFonts::kScript);
        comment.text = read.text;
        if (read.isRich) contents.foreign.add("formats of letters in comments");
        const auto author = static_cast<std::size_t>(node.attribute("authorId").as_uint());
        if (author < authors.size()) comment.author = authors[author];
        sheet.comments[{place->top, place->left}] = comment;
    }
}

} // namespace

void readComments(FileContents& contents, Sheet& sheet, const std::vector<Relation>& relations) {
    if (const Relation* found = findKind(relations, "comments"))
        readTexts(contents, sheet, found->target);
    // A sheet of the older kind may have several: of its pages' headers, too.
    for (const Relation& relation : relations)
        if (relation.kind == "vmlDrawing") readBoxes(contents, sheet, relation.target);
}

} // namespace headless::excel
