// A workbook that is open in the office.
#pragma once

#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/lang/XComponent.hpp>

#include "excel/office.h"

namespace headless::excel {

/// Closed with its scope. Members throw WorkbookError, and what the office throws.
class OfficeDocument {
public:
    OfficeDocument(const com::sun::star::uno::Reference<com::sun::star::frame::XDesktop2>& desktop,
                   const OfficeFile& file, bool visible);
    ~OfficeDocument();
    OfficeDocument(const OfficeDocument&) = delete;
    OfficeDocument& operator=(const OfficeDocument&) = delete;

    /// Gives Asian letters the font of the others: a cell of other programs has one font, and one
    /// with two would come out as several pieces.
    void useOneFont() const;
    void calculate() const;
    /// What its window shows, or would.
    [[nodiscard]] OfficeViews views() const;
    void store(const OfficeFile& target) const;

private:
    com::sun::star::uno::Reference<com::sun::star::lang::XComponent> component_;
};

} // namespace headless::excel
