#include "ed/drawing_view.h"

#include "ed/state.h"

CView* acedGetAcadDwgView() {
    headless::EdState& state = headless::EdState::current();
    return state.documents.current() == nullptr ? nullptr : &state.drawingView;
}
