#include "interact/hook_use_tool.h"

#include <optional>

#include <aced.h>
#include <geassign.h>
#include <rxmfcapi.h>

#include "OrnCore/zel_cmd.h"

int CHookUseTool::m_bMouseLeftDown = 0;
int CHookUseTool::m_bShiftDown = 0;
AcGePoint3d CHookUseTool::m_LeftDownPt;
CHookUseTool::ShortcutKey CHookUseTool::m_eKey = CHookUseTool::kNoShortcut;
CString CHookUseTool::m_strCom;

namespace {

bool isDown(int key) { return GetKeyState(key) < 0; }

/// Where the cursor stands in a mouse message; coordinates left of or above the view are negative.
CPoint cursorOf(const tagMSG& message) {
    const auto packed = static_cast<unsigned long>(message.lParam);
    constexpr unsigned kBits = 16;
    return {static_cast<short>(packed), static_cast<short>(packed >> kBits)};
}

/// The world's point under a pixel; nothing outside of all viewports.
std::optional<AcGePoint3d> worldAt(const CPoint& pixel) {
    acedDwgPoint point;
    if (acedCoordFromPixelToWorld(acedGetWinNum(pixel.x, pixel.y), pixel, point) == FALSE)
        return std::nullopt;
    return asPnt3d(point);
}

} // namespace

CHookUseTool::CHookUseTool() {
    m_strCom = L"";
    m_eKey = kNoShortcut;
    acedRegisterFilterWinMsg(&CHookUseTool::QuillproDllFilterWinMsg);
}

CHookUseTool::~CHookUseTool() {
    acedRemoveFilterWinMsg(&CHookUseTool::QuillproDllFilterWinMsg);
    m_strCom = L"";
    m_eKey = kNoShortcut;
}

void CHookUseTool::InitShortcutKey(CHookUseTool::ShortcutKey const& kind, CString const& command) {
    m_eKey = command.IsEmpty() ? kNoShortcut : kind;
    if (!command.IsEmpty()) m_strCom = command;
}

int CHookUseTool::IsUcsShortcutKey(tagMSG* msg, CHookUseTool::ShortcutKey const& kind) {
    if (kind != kUcsShortcut) return 0;
    if (msg->message != WM_KEYDOWN && msg->message != WM_SYSKEYDOWN) return 0;
    if (msg->wParam != 'C' && msg->wParam != 'c') return 0;
    return isDown(VK_MENU) ? 1 : 0;
}

int CHookUseTool::QuillproDllFilterWinMsg(tagMSG* msg) {
    if (acedGetAcadDwgView() == nullptr) return 0;
    if (msg->message == WM_LBUTTONDOWN) {
        m_bMouseLeftDown = 1;
        m_LeftDownPt = worldAt(cursorOf(*msg)).value_or(m_LeftDownPt);
    }
    m_bShiftDown = isDown(VK_SHIFT) ? 1 : 0;
    if (m_eKey == kNoShortcut) return 0;
    if (IsUcsShortcutKey(msg, m_eKey) != 0) CZelCmd::ExecuteCommand(m_strCom);
    return 0;
}
