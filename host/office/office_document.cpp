#include "office/office_document.h"

#include <com/sun/star/beans/XMultiPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/document/UpdateDocMode.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <rtl/ref.hxx>
#include <rtl/uri.hxx>

#include "excel/workbook_error.h"
#include "office/office_properties.h"
#include "office/office_text.h"
#include "office/office_views.h"
#include "office/refused_questions.h"

namespace headless::excel {
namespace {

namespace uno = com::sun::star::uno;
namespace beans = com::sun::star::beans;
namespace container = com::sun::star::container;
namespace sheet = com::sun::star::sheet;
using rtl::OUString;

OUString urlOf(const std::string& path) {
    return "file://" + rtl::Uri::encode(wide(path), rtl_UriCharClassPchar,
                                        rtl_UriEncodeIgnoreEscapes, RTL_TEXTENCODING_UTF8)
                           .replaceAll("%2F", "/");
}

OUString filterOf(FileKind kind) {
    switch (kind) {
    case FileKind::kXlsx:
        return "Calc MS Excel 2007 XML";
    case FileKind::kXls:
        return "MS Excel 97";
    case FileKind::kOds:
        return "calc8";
    }
    return {};
}

/// Names come sorted, as the office asks for them.
const uno::Sequence<OUString>& westernFont() {
    static const auto names =
        sequence<OUString>({"CharFontName", "CharHeight", "CharPosture", "CharWeight"});
    return names;
}
const uno::Sequence<OUString>& asianFont() {
    static const auto names = sequence<OUString>(
        {"CharFontNameAsian", "CharHeightAsian", "CharPostureAsian", "CharWeightAsian"});
    return names;
}

/// What stands in protected sheets, and styles beside these, cannot be changed and stays as it is.
void unifyFont(const uno::Any& formatted) {
    const uno::Reference<beans::XMultiPropertySet> format(formatted, uno::UNO_QUERY_THROW);
    const uno::Sequence<uno::Any> font = format->getPropertyValues(westernFont());
    if (font == format->getPropertyValues(asianFont())) return;
    try {
        format->setPropertyValues(asianFont(), font);
    } catch (const com::sun::star::lang::DisposedException&) {
        throw; // The office is gone.
    } catch (const uno::Exception&) {
        return;
    }
}

} // namespace

OfficeDocument::OfficeDocument(const uno::Reference<com::sun::star::frame::XDesktop2>& desktop,
                               const OfficeFile& file, bool visible) {
    namespace document = com::sun::star::document;
    const rtl::Reference<RefusedQuestions> questions(new RefusedQuestions);
    const uno::Reference<com::sun::star::task::XInteractionHandler> handler(questions.get());
    component_ = desktop->loadComponentFromURL(
        urlOf(file.path), "_blank", 0,
        sequence<beans::PropertyValue>(
            {property("FilterName", uno::Any(filterOf(file.kind))),
             property("Hidden", uno::Any(!visible)), property("ReadOnly", uno::Any(true)),
             property("InteractionHandler", uno::Any(handler)),
             property("MacroExecutionMode", uno::Any(document::MacroExecMode::NEVER_EXECUTE)),
             property("UpdateDocMode", uno::Any(document::UpdateDocMode::NO_UPDATE))}));
    if (questions->askedPassword()) throw WorkbookError("it is protected by a password");
    if (!component_.is()) throw WorkbookError("it is damaged, or not what its name says");
}

OfficeDocument::~OfficeDocument() {
    try {
        const uno::Reference<com::sun::star::util::XCloseable> closeable(component_,
                                                                         uno::UNO_QUERY);
        if (closeable.is()) closeable->close(true);
    } catch (const uno::Exception&) {
        // Somebody closed it, or the office is gone.
    }
}

void OfficeDocument::useOneFont() const {
    const uno::Reference<com::sun::star::style::XStyleFamiliesSupplier> families(
        component_, uno::UNO_QUERY_THROW);
    const uno::Reference<container::XIndexAccess> styles(
        families->getStyleFamilies()->getByName("CellStyles"), uno::UNO_QUERY_THROW);
    for (sal_Int32 i = 0; i < styles->getCount(); ++i)
        unifyFont(styles->getByIndex(i));
    const uno::Reference<container::XIndexAccess> sheets = sheetsOf(component_);
    for (sal_Int32 i = 0; i < sheets->getCount(); ++i) {
        const uno::Reference<sheet::XUniqueCellFormatRangesSupplier> supplier(sheets->getByIndex(i),
                                                                              uno::UNO_QUERY_THROW);
        const auto formats = supplier->getUniqueCellFormatRanges();
        for (sal_Int32 k = 0; k < formats->getCount(); ++k)
            unifyFont(formats->getByIndex(k));
    }
}

void OfficeDocument::calculate() const {
    const uno::Reference<sheet::XCalculatable> sheets(component_, uno::UNO_QUERY_THROW);
    sheets->calculateAll();
}

OfficeViews OfficeDocument::views() const { return readViews(component_); }

void OfficeDocument::store(const OfficeFile& target) const {
    const uno::Reference<com::sun::star::frame::XStorable> storable(component_,
                                                                    uno::UNO_QUERY_THROW);
    storable->storeToURL(
        urlOf(target.path),
        sequence<beans::PropertyValue>({property("FilterName", uno::Any(filterOf(target.kind))),
                                        property("Overwrite", uno::Any(true))}));
}

} // namespace headless::excel
