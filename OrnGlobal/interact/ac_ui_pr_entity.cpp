#include "interact/ac_ui_pr_entity.h"

#include <algorithm>

#include <aced.h>
#include <dbents.h>
#include <dbmain.h>
#include <geassign.h>
#include <rxclass.h>

#include "frame/ac_ut_sym_tbl.h"
#include "frame/ac_ut_sys_var.h"
#include "frame/ac_ut_ui.h"
#include "frame/acad_constants.h"
#include "frame/object_handle.h"

namespace {

constexpr int kNothingThere = 7;
constexpr int kEmptyInput = 52;

/// Why the last pick failed; 0 when the host does not say.
int pickError() {
    int error = 0;
    return AcUtSysVar::getSysVar(AcadVar::adserr, error) == Acad::eOk ? error : 0;
}

resbuf coordinateSystem(short code) {
    resbuf system = {};
    system.restype = RTSHORT;
    system.resval.rint = code;
    return system;
}

/// The point in display coordinates; as it is where the view has none for it.
AcGePoint3d displayed(const ads_point point) {
    const resbuf user = coordinateSystem(1);
    const resbuf display = coordinateSystem(2);
    AcGePoint3d result = asPnt3d(point);
    acedTrans(point, &user, &display, 0, asDblArray(result));
    return result;
}

} // namespace

AcUiPrEntity::AcUiPrEntity(const wchar_t* msg, const wchar_t* keyWords)
    : AcUiPrBase(msg, keyWords) {}

AcUiPrEntity::~AcUiPrEntity() = default;

Acad::ErrorStatus AcUiPrEntity::addAllowedClass(AcRxClass* cls, bool exactMatch) {
    if (cls == nullptr) return Acad::eInvalidInput;
    const bool known = std::any_of(allowed_.begin(), allowed_.end(),
                                   [&](const AllowedClass& allowed) { return allowed.cls == cls; });
    if (known) return Acad::eDuplicateKey;
    allowed_.push_back({cls, exactMatch});
    return Acad::eOk;
}

bool AcUiPrEntity::filterLockedLayers() const { return filterLockedLayers_; }

Acad::ErrorStatus AcUiPrEntity::setFilterLockedLayers(bool filter) {
    filterLockedLayers_ = filter;
    return Acad::eOk;
}

Acad::ErrorStatus AcUiPrEntity::setAllowNone(bool allow) {
    allowNone_ = allow;
    return Acad::eOk;
}

AcDbObjectId AcUiPrEntity::objectId() const { return objectId_; }

AcGePoint3d AcUiPrEntity::pickPoint() const { return pickPoint_; }

int AcUiPrEntity::go() {
    const CString prompt = promptText();
    for (;;) {
        acedInitGet(0, keyWords());
        ads_name name = {};
        ads_point point = {};
        const int answer = acedEntSel(prompt, name, point);
        if (answer == RTKWORD) return takeKeyWord();
        if (answer == RTERROR) {
            const int error = pickError();
            if (error == kNothingThere) {
                pickPoint_ = displayed(point);
                return kNormal;
            }
            if (error == kEmptyInput) return allowNone_ ? kNone : kCancelled;
            acutPrintf(L"\nNothing selected.");
            continue;
        }
        if (answer != RTNORM) return kCancelled;

        AcDbObjectId id;
        AcUtUi::rxErrorMsg(acdbGetObjectId(id, name));
        const Verdict verdict = judge(id);
        if (verdict == Verdict::notOpened) return kCancelled;
        if (verdict == Verdict::refused) continue;
        objectId_ = id;
        pickPoint_ = asPnt3d(point);
        return kNormal;
    }
}

/// Tells the user what is wrong with an entity that is not accepted.
AcUiPrEntity::Verdict AcUiPrEntity::judge(AcDbObjectId id) const {
    AcDbEntity* entity = nullptr;
    if (const auto status = acdbOpenAcDbEntity(entity, id, AcDb::kForRead); status != Acad::eOk) {
        AcUtUi::rxErrorMsg(status);
        return Verdict::notOpened;
    }
    const Closing<AcDbEntity> closing(entity);
    const bool accepted = correctClass(*entity) &&
                          (!filterLockedLayers_ || !AcUtSymTbl::isOnLockedLayer(entity, true));
    return accepted ? Verdict::accepted : Verdict::refused;
}

bool AcUiPrEntity::correctClass(const AcDbEntity& entity) const {
    if (allowed_.empty()) return true;
    const AcRxClass* const own = entity.isA();
    CString names;
    for (const AllowedClass& allowed : allowed_) {
        if (allowed.exactMatch ? own == allowed.cls : own->isDerivedFrom(allowed.cls)) return true;
        if (!names.IsEmpty()) names += L", ";
        names += allowed.cls->name();
    }
    acutPrintf(L"\nSelected entity must be of type: %s", static_cast<const wchar_t*>(names));
    return false;
}
