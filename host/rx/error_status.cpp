#include "rx/error_status.h"

const ACHAR* acadErrorStatusText(Acad::ErrorStatus status) {
    switch (status) {
#define HEADLESS_ERROR_STATUS_TEXT(name, value)                                                    \
    case Acad::name:                                                                               \
        return L"" #name;
        HEADLESS_ERROR_STATUSES(HEADLESS_ERROR_STATUS_TEXT)
#undef HEADLESS_ERROR_STATUS_TEXT
    }
    return L"Unknown error";
}
