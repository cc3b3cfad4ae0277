// What windows show of a workbook that is open in the office.
#pragma once

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/lang/XComponent.hpp>

#include "excel/office.h"

namespace headless::excel {

// These throw what the office throws.

[[nodiscard]] com::sun::star::uno::Reference<com::sun::star::container::XIndexAccess>
sheetsOf(const com::sun::star::uno::Reference<com::sun::star::lang::XComponent>& document);

/// What its window shows, or would, but for grid lines. Of hidden sheets the office does not tell.
[[nodiscard]] OfficeViews
readViews(const com::sun::star::uno::Reference<com::sun::star::lang::XComponent>& document);

} // namespace headless::excel
