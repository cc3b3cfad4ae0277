// MFC's checks for programmers.
#pragma once

#include <cassert>

#define ASSERT(condition) assert(condition)
#define ASSERT_VALID(object) assert((object) != nullptr)
#define ENSURE(condition)                                                                          \
    do {                                                                                           \
        if (!(condition)) AfxThrowInvalidArgException();                                           \
    } while (false)
#define TRACE(...) static_cast<void>(0)
#define DEBUG_NEW new

#ifdef NDEBUG
#define VERIFY(condition) static_cast<void>(condition)
#else
#define VERIFY(condition) assert(condition)
#endif
