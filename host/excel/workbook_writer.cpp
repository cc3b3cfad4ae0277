#include <algorithm>
#include <cstring>
#include <vector>

#include "excel/file_finish.h"
#include "excel/library_calls.h"
#include "excel/scratch_file.h"
#include "excel/sheet_writer.h"
#include "excel/workbook_files.h"
#include "win/replace_file.h"

namespace headless::excel {
namespace {

struct Free {
    void operator()(lxw_workbook* workbook) const { lxw_workbook_free(workbook); }
};

class Writer {
public:
    Writer(const Workbook& source, const std::string& path)
        : source_(source), target_(workbook_new(path.c_str())) {
        if (target_ == nullptr) throw WorkbookError("no temporary file can be made");
    }

    void write() {
        std::vector<lxw_worksheet*> sheets;
        for (const auto& sheet : source_.sheets) {
            lxw_worksheet* made = workbook_add_worksheet(target_.get(), sheet->name.c_str());
            if (made == nullptr) throw WorkbookError("a sheet cannot be named " + sheet->name);
            sheets.push_back(made);
        }
        LibraryFormats formats(target_.get(), source_.formats);
        for (std::size_t i = 1; i < source_.styles.size(); ++i)
            styleFormats_.push_back(formats.addUnused(source_.styles[i].format));
        for (std::size_t i = 0; i < sheets.size(); ++i)
            writeSheet(*source_.sheets[i], sheets[i], formats);
        worksheet_activate(sheets[std::min(source_.activeSheet, sheets.size() - 1)]);
        for (const DefinedName& name : source_.names)
            writeName(name);
        writeProperties();
        check(workbook_close(target_.release()));
    }

    /// For each named style but the first, the number of a cell format in the file like it.
    [[nodiscard]] const std::vector<int>& styleFormats() const { return styleFormats_; }

private:
    void writeName(const DefinedName& name) {
        const std::string prefix =
            name.sheet == nullptr ? "" : quotedSheetName(name.sheet->name) + "!";
        check(workbook_define_name(target_.get(), (prefix + name.name).c_str(),
                                   ("=" + name.refersTo).c_str()));
    }

    void writeProperties() {
        DocumentProperties own = source_.properties;
        lxw_doc_properties properties{};
        properties.title = own.title.data();
        properties.subject = own.subject.data();
        properties.author = own.author.data();
        properties.keywords = own.keywords.data();
        properties.comments = own.comments.data();
        properties.category = own.category.data();
        properties.company = own.company.data();
        properties.manager = own.manager.data();
        if (!(own == DocumentProperties{})) {
            check(workbook_set_properties(target_.get(), &properties));
        }
    }

    const Workbook& source_;
    std::unique_ptr<lxw_workbook, Free> target_;
    std::vector<int> styleFormats_;
};

} // namespace

void writeWorkbook(const Workbook& workbook, const std::string& path) {
    try {
        const ScratchFile scratch;
        Writer writer(workbook, scratch.path());
        writer.write();
        if (needsFinish(workbook)) finishFile(workbook, writer.styleFormats(), scratch.path());
        struct stat status {};
        const int error = replaceFile(path, scratch.bytes(), Durability::kProcess, status);
        if (error != 0) throw WorkbookError(std::strerror(error));
    } catch (const WorkbookError& error) {
        throw WorkbookError(path + " cannot be written: " + error.what());
    }
}

} // namespace headless::excel
