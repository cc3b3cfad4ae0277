// The base of the frame's tests: a session with a drawing, and what was printed.
#pragma once

#include <memory>
#include <string>

#include <gmock/gmock.h>

#include <dbents.h>
#include <dbsymtb.h>

#include "frame/object_handle.h"
#include "support/session_fixture.h"

class FrameTest : public test_support::SessionTest {
protected:
    AcDbObjectId addLine(const ACHAR* block = ACDB_MODEL_SPACE) {
        auto line = std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
        line->setDatabaseDefaults(database());
        return add(std::move(line), block);
    }

    /// What was printed since the last call.
    std::wstring printed() {
        std::wstring text = session().output();
        session().clearOutput();
        return text;
    }

    template <class Change>
    void changeLayer(const ACHAR* name, Change change) {
        const WriteHandle<AcDbLayerTableRecord> layer(addLayer(name));
        ASSERT_TRUE(layer);
        change(*layer);
    }
};
