// Asks for one entity, of certain classes and not on locked layers where the caller wants that.
#pragma once

#include <vector>

#include <dbid.h>
#include <gepnt3d.h>

#include "interact/ac_ui_pr_base.h"

class AcDbEntity;
class AcRxClass;

class AFX_EXT_CLASS AcUiPrEntity : public AcUiPrBase {
public:
    AcUiPrEntity(const wchar_t* msg, const wchar_t* keyWords);
    ~AcUiPrEntity() override;

    /// Entities of the class are accepted, those of derived classes too unless `exactMatch`.
    /// Without any class all are. eDuplicateKey when it is there already, eInvalidInput for null.
    Acad::ErrorStatus addAllowedClass(AcRxClass* cls, bool exactMatch);

    bool filterLockedLayers() const;
    /// True asks again, with a word to the user, for an entity on a locked layer.
    Acad::ErrorStatus setFilterLockedLayers(bool filter);
    /// True makes Enter alone an answer, kNone.
    Acad::ErrorStatus setAllowNone(bool allow);

    /// Asks until an entity is accepted or the user has something else to say.
    /// @return  kNormal also for a click where nothing lies: the id then is what it was before.
    int go() override;

    AcDbObjectId objectId() const;
    /// Where the user clicked: in user coordinates, in display coordinates where nothing lay.
    AcGePoint3d pickPoint() const;

private:
    struct AllowedClass {
        AcRxClass* cls;
        bool exactMatch;
    };
    enum class Verdict { accepted, refused, notOpened };

    Verdict judge(AcDbObjectId id) const;
    bool correctClass(const AcDbEntity& entity) const;

    bool filterLockedLayers_ = false;
    std::vector<AllowedClass> allowed_;
    AcDbObjectId objectId_;
    bool allowNone_ = false;
    AcGePoint3d pickPoint_;
};
