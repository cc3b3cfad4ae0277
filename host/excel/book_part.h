// Base of the objects that belong to one open workbook.
#pragma once

#include "excel/objects.h"
#include "win/class_objects.h"

namespace headless::excel {

class BookPart : public ExcelObject {
public:
    BookPart(const StatePointer& state, const BookPointer& book) : state_(state), book_(book) {}

protected:
    Workbook& workbook() const {
        if (book_->closed) {
            throw AutomationError(RPC_E_DISCONNECTED,
                                  "the object invoked has disconnected from its workbook");
        }
        return *book_->workbook;
    }

    StatePointer state_;
    BookPointer book_;
};

} // namespace headless::excel
