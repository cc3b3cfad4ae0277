// Names that every drawing has, and tests of symbol names.
#pragma once

#include "db/object_id.h"

class AcString;

/// Stateless; reached through acdbSymUtil().
class AcDbSymbolUtilities {
public:
    class Services {
    public:
        const ACHAR* blockModelSpaceName() const { return L"*Model_Space"; }
        const ACHAR* blockPaperSpaceName() const { return L"*Paper_Space"; }
        const ACHAR* layerZeroName() const { return L"0"; }
        const ACHAR* layerDefpointsName() const { return L"Defpoints"; }
        const ACHAR* linetypeByBlockName() const { return L"ByBlock"; }
        const ACHAR* linetypeByLayerName() const { return L"ByLayer"; }
        const ACHAR* linetypeContinuousName() const { return L"Continuous"; }
        const ACHAR* textStyleStandardName() const { return L"Standard"; }
        const ACHAR* dimStyleStandardName() const { return L"Standard"; }
        const ACHAR* mlineStyleStandardName() const { return L"Standard"; }
        const ACHAR* regAppAcadName() const { return L"ACAD"; }
        const ACHAR* viewportActiveName() const { return L"*Active"; }

        bool isBlockModelSpaceName(const ACHAR* name) const;
        /// True for the numbered paper spaces too.
        bool isBlockPaperSpaceName(const ACHAR* name) const;
        bool isLayerZeroName(const ACHAR* name) const;
        bool isLayerDefpointsName(const ACHAR* name) const;
        bool isLinetypeByBlockName(const ACHAR* name) const;
        bool isLinetypeByLayerName(const ACHAR* name) const;
        bool isLinetypeContinuousName(const ACHAR* name) const;

        AcDbObjectId blockModelSpaceId(AcDbDatabase* db) const;
        AcDbObjectId blockPaperSpaceId(AcDbDatabase* db) const;
        AcDbObjectId layerZeroId(AcDbDatabase* db) const;
        AcDbObjectId linetypeByBlockId(AcDbDatabase* db) const;
        AcDbObjectId linetypeByLayerId(AcDbDatabase* db) const;
        AcDbObjectId linetypeContinuousId(AcDbDatabase* db) const;

        /// Ids of records by name, eKeyNotFound when there is none. Hidden layers answer too.
        Acad::ErrorStatus getBlockId(AcDbObjectId& id, const ACHAR* name, AcDbDatabase* db) const;
        Acad::ErrorStatus getLayerId(AcDbObjectId& id, const ACHAR* name, AcDbDatabase* db) const;
        Acad::ErrorStatus getLinetypeId(AcDbObjectId& id, const ACHAR* name,
                                        AcDbDatabase* db) const;
        Acad::ErrorStatus getTextStyleId(AcDbObjectId& id, const ACHAR* name,
                                         AcDbDatabase* db) const;
        Acad::ErrorStatus getDimStyleId(AcDbObjectId& id, const ACHAR* name,
                                        AcDbDatabase* db) const;

        /// eInvalidInput unless a record may have the name.
        /// @param allowVerticalBar  as names of records from external drawings have it.
        Acad::ErrorStatus validateSymbolName(const ACHAR* name, bool allowVerticalBar) const;
        /// The record's name, as a copy that the caller frees. Also of records open for writing.
        Acad::ErrorStatus getSymbolName(ACHAR*& name, AcDbObjectId record) const;
        Acad::ErrorStatus getSymbolName(AcString& name, AcDbObjectId record) const;
    };
};

const AcDbSymbolUtilities::Services* acdbSymUtil();
