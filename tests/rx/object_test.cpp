#include <memory>

#include <gtest/gtest.h>

#include "rx/class_dictionary.h"
#include "rx/object.h"

class Shape : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(Shape);
};
class Round : public Shape {
public:
    ACRX_DECLARE_MEMBERS(Round);
};
class Square : public Shape {
public:
    ACRX_DECLARE_MEMBERS(Square);
};

ACRX_NO_CONS_DEFINE_MEMBERS(Shape, AcRxObject)
HEADLESS_DXF_DEFINE_MEMBERS(Round, Shape, "ROUND")
ACRX_CONS_DEFINE_MEMBERS(Square, Shape, 1)

namespace {

TEST(RuntimeClass, KindsFollowTheParents) {
    const Round round;
    const struct {
        const char* name;
        const AcRxClass* kind;
        bool isKind;
    } cases[] = {
        {"its own class", Round::desc(), true},
        {"its parent", Shape::desc(), true},
        {"the root", AcRxObject::desc(), true},
        {"a sister", Square::desc(), false},
        {"the class of classes", AcRxClass::desc(), false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(round.isKindOf(c.kind), c.isKind);
        EXPECT_EQ(round.isA()->isDerivedFrom(c.kind), c.isKind);
    }
}

TEST(RuntimeClass, CastsDownOnlyToWhatItIs) {
    Round round;
    AcRxObject* object = &round;
    EXPECT_EQ(Round::cast(object), &round);
    EXPECT_EQ(Shape::cast(object), &round);
    EXPECT_EQ(Square::cast(object), nullptr);
    EXPECT_EQ(Round::cast(static_cast<AcRxObject*>(nullptr)), nullptr);
}

TEST(RuntimeClass, MakesObjectsUnlessAbstract) {
    const std::unique_ptr<AcRxObject> made(Square::desc()->create());
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->isA(), Square::desc());
    EXPECT_EQ(Shape::desc()->create(), nullptr);
}

TEST(ClassDictionary, FindsByEitherNameWhileTheClassLives) {
    const auto& dictionary = headless::ClassDictionary::instance();
    EXPECT_EQ(acrxGetClassByName(L"Round"), Round::desc());
    EXPECT_EQ(dictionary.byDxfName("ROUND"), Round::desc());
    EXPECT_STREQ(Round::desc()->dxfName(), L"ROUND");
    EXPECT_EQ(Square::desc()->dxfName(), nullptr);
    EXPECT_EQ(acrxGetClassByName(L"ROUND"), nullptr) << "names of classes know capitals";
    EXPECT_EQ(acrxGetClassByName(nullptr), nullptr);
    {
        // As in a module that is unloaded while the program goes on.
        const AcRxClass passing(L"Passing", Shape::desc(), nullptr, "PASSING");
        EXPECT_EQ(acrxGetClassByName(L"Passing"), &passing);
    }
    EXPECT_EQ(acrxGetClassByName(L"Passing"), nullptr);
    EXPECT_EQ(dictionary.byDxfName("PASSING"), nullptr);
}

TEST(ErrorStatus, NumbersAndTextsAreTheDocumentedOnes) {
    const struct {
        int value;
        const wchar_t* text;
    } cases[] = {
        {0, L"eOk"},
        {3, L"eInvalidInput"},
        {16, L"eNullObjectId"},
        {26, L"eAlreadyInDb"},
        {46, L"eNotThatKindOfClass"},
        {80, L"eWasErased"},
        {81, L"ePermanentlyErased"},
        {82, L"eWasOpenForRead"},
        {83, L"eWasOpenForWrite"},
        {87, L"eOnLockedLayer"},
        {95, L"eDuplicateRecordName"},
        {124, L"eNoDatabase"},
        {129, L"eIteratorDone"},
        {137, L"eNotInDatabase"},
        {312, L"eNullExtents"},
        {368, L"eBadDxfFile"},
    };
    for (const auto& c : cases)
        EXPECT_STREQ(acadErrorStatusText(static_cast<Acad::ErrorStatus>(c.value)), c.text);
}

} // namespace
