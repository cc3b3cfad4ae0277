// The base of the editor's tests: a state of its own, with a fresh drawing open.
#pragma once

#include <gtest/gtest.h>

#include "db/database.h"
#include "db/state.h"
#include "ed/state.h"

class EditorTest : public testing::Test {
protected:
    EditorTest() {
        ed_.documents.open(std::make_unique<AcDbDatabase>(true, true), L"/plans/Storey 1.dxf",
                           true);
    }

    AcDbDatabase& drawing() { return *ed_.documents.current()->database(); }
    void type(const wchar_t* line) { ed_.input.type(line); }
    bool printed(std::wstring_view text) const {
        return ed_.output.text().find(text) != std::wstring::npos;
    }

    headless::DbState db_;
    headless::EdState ed_;
};
