#include "office/office_views.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XViewFreezable.hpp>
#include <com/sun/star/sheet/XViewSplitable.hpp>

namespace headless::excel {
namespace {

namespace uno = com::sun::star::uno;
namespace container = com::sun::star::container;
namespace sheet = com::sun::star::sheet;
using com::sun::star::beans::XPropertySet;
using com::sun::star::lang::XComponent;

SheetView viewIn(const uno::Reference<sheet::XSpreadsheetView>& window) {
    SheetView view;
    const uno::Reference<sheet::XViewFreezable> freezable(window, uno::UNO_QUERY_THROW);
    if (freezable->hasFrozenPanes()) {
        const uno::Reference<sheet::XViewSplitable> split(window, uno::UNO_QUERY_THROW);
// Nothing else tells of a window split one way how many rows or columns that are.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
        view.frozenRows = static_cast<int>(split->getSplitRow());
        view.frozenColumns = static_cast<int>(split->getSplitColumn());
#pragma GCC diagnostic pop
    }
    const uno::Reference<XPropertySet> settings(window, uno::UNO_QUERY_THROW);
    sal_Int16 zoom = 100;
    settings->getPropertyValue("ZoomValue") >>= zoom;
    view.zoom = zoom;
    return view;
}

} // namespace

uno::Reference<container::XIndexAccess> sheetsOf(const uno::Reference<XComponent>& document) {
    const uno::Reference<sheet::XSpreadsheetDocument> book(document, uno::UNO_QUERY_THROW);
    return {book->getSheets(), uno::UNO_QUERY_THROW};
}

OfficeViews readViews(const uno::Reference<XComponent>& document) {
    const uno::Reference<com::sun::star::frame::XModel> model(document, uno::UNO_QUERY_THROW);
    const uno::Reference<sheet::XSpreadsheetView> window(model->getCurrentController(),
                                                         uno::UNO_QUERY_THROW);
    const uno::Reference<container::XIndexAccess> all = sheetsOf(document);
    const auto active = window->getActiveSheet();
    OfficeViews views;
    for (sal_Int32 i = 0; i < all->getCount(); ++i) {
        const uno::Reference<sheet::XSpreadsheet> one(all->getByIndex(i), uno::UNO_QUERY_THROW);
        if (one == active) views.activeSheet = static_cast<std::size_t>(i);
        const uno::Reference<XPropertySet> settings(one, uno::UNO_QUERY_THROW);
        bool isVisible = false;
        settings->getPropertyValue("IsVisible") >>= isVisible;
        if (isVisible) window->setActiveSheet(one);
        views.sheets.push_back(isVisible ? viewIn(window) : SheetView());
    }
    window->setActiveSheet(active);
    return views;
}

} // namespace headless::excel
