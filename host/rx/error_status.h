// The statuses that every call of the platform answers with.
#pragma once

#include "rx/types.h"

// One row a status: name and value. Written as a macro because both the enumeration and the texts
// come from it.
#define HEADLESS_ERROR_STATUSES(ROW)                                                               \
    ROW(eOk, 0)                                                                                    \
    ROW(eNotImplementedYet, 1)                                                                     \
    ROW(eNotApplicable, 2)                                                                         \
    ROW(eInvalidInput, 3)                                                                          \
    ROW(eAmbiguousInput, 4)                                                                        \
    ROW(eAmbiguousOutput, 5)                                                                       \
    ROW(eOutOfMemory, 6)                                                                           \
    ROW(eBufferTooSmall, 7)                                                                        \
    ROW(eInvalidOpenState, 8)                                                                      \
    ROW(eEntityInInactiveLayout, 9)                                                                \
    ROW(eHandleExists, 10)                                                                         \
    ROW(eNullHandle, 11)                                                                           \
    ROW(eBrokenHandle, 12)                                                                         \
    ROW(eUnknownHandle, 13)                                                                        \
    ROW(eHandleInUse, 14)                                                                          \
    ROW(eNullObjectPointer, 15)                                                                    \
    ROW(eNullObjectId, 16)                                                                         \
    ROW(eNullBlockName, 17)                                                                        \
    ROW(eContainerNotEmpty, 18)                                                                    \
    ROW(eNullEntityPointer, 20)                                                                    \
    ROW(eIllegalEntityType, 21)                                                                    \
    ROW(eKeyNotFound, 22)                                                                          \
    ROW(eDuplicateKey, 23)                                                                         \
    ROW(eInvalidIndex, 24)                                                                         \
    ROW(eAlreadyInDb, 26)                                                                          \
    ROW(eNegativeValueNotAllowed, 29)                                                              \
    ROW(eInvalidExtents, 30)                                                                       \
    ROW(eInvalidAdsName, 31)                                                                       \
    ROW(eInvalidSymbolTableName, 32)                                                               \
    ROW(eInvalidKey, 33)                                                                           \
    ROW(eWrongObjectType, 34)                                                                      \
    ROW(eWrongDatabase, 35)                                                                        \
    ROW(eObjectToBeDeleted, 36)                                                                    \
    ROW(eInvalidDwgVersion, 37)                                                                    \
    ROW(eNotOpenForRead, 44)                                                                       \
    ROW(eNotOpenForWrite, 45)                                                                      \
    ROW(eNotThatKindOfClass, 46)                                                                   \
    ROW(eInvalidDxfCode, 50)                                                                       \
    ROW(eInvalidResBuf, 51)                                                                        \
    ROW(eMustFirstAddBlockToDb, 58)                                                                \
    ROW(eFileNotFound, 76)                                                                         \
    ROW(eWasErased, 80)                                                                            \
    ROW(ePermanentlyErased, 81)                                                                    \
    ROW(eWasOpenForRead, 82)                                                                       \
    ROW(eWasOpenForWrite, 83)                                                                      \
    ROW(eWasOpenForUndo, 84)                                                                       \
    ROW(eWasNotifying, 85)                                                                         \
    ROW(eWasOpenForNotify, 86)                                                                     \
    ROW(eOnLockedLayer, 87)                                                                        \
    ROW(eAtMaxReaders, 90)                                                                         \
    ROW(eIsXRefObject, 92)                                                                         \
    ROW(eNotAnEntity, 93)                                                                          \
    ROW(eHadMultipleReaders, 94)                                                                   \
    ROW(eDuplicateRecordName, 95)                                                                  \
    ROW(eXRefDependent, 96)                                                                        \
    ROW(eSelfReference, 97)                                                                        \
    ROW(eWasNotOpenForWrite, 100)                                                                  \
    ROW(eCannotBeErasedByCaller, 105)                                                              \
    ROW(eWasNotErased, 107)                                                                        \
    ROW(eNoDatabase, 124)                                                                          \
    ROW(eRegappIdNotFound, 126)                                                                    \
    ROW(eIteratorDone, 129)                                                                        \
    ROW(eNullIterator, 130)                                                                        \
    ROW(eNotInBlock, 131)                                                                          \
    ROW(eCannotScaleNonUniformly, 136)                                                             \
    ROW(eNotInDatabase, 137)                                                                       \
    ROW(eOutOfRange, 151)                                                                          \
    ROW(eDegenerateGeometry, 153)                                                                  \
    ROW(eCannotExplodeEntity, 159)                                                                 \
    ROW(eBadColorIndex, 202)                                                                       \
    ROW(eNullExtents, 312)                                                                         \
    ROW(eLockViolation, 320)                                                                       \
    ROW(eCantOpenFile, 364)                                                                        \
    ROW(eBadDxfFile, 368)                                                                          \
    ROW(eMissingDxfSection, 370)

namespace Acad {
enum ErrorStatus {
#define HEADLESS_ERROR_STATUS_ENUMERATOR(name, value) name = value,
    HEADLESS_ERROR_STATUSES(HEADLESS_ERROR_STATUS_ENUMERATOR)
#undef HEADLESS_ERROR_STATUS_ENUMERATOR
};
} // namespace Acad

/// The status's own name, for example L"eInvalidInput"; an unknown value gives "Unknown error".
const ACHAR* acadErrorStatusText(Acad::ErrorStatus status);
