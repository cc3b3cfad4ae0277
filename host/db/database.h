// A drawing: all its objects by id and handle, its tables, its root dictionary and its settings.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "db/block_table.h"
#include "db/color.h"
#include "db/dictionary.h"
#include "db/dim_style_table.h"
#include "db/handle_table.h"
#include "db/header_variables.h"
#include "db/highlight_set.h"
#include "db/layer_table.h"
#include "db/linetype_table.h"
#include "db/regapp_table.h"
#include "db/text_style_table.h"
#include "db/view_tables.h"

class AcDbIdMapping;
class AcDbTransactionManager;

namespace headless {

class DbState;
class DrawingRoots;
class RecordArchive;
class UndoJournal;

/// Settings of a drawing that its header holds, by the names of the system variables. Ids are null
/// until the drawing is complete.
struct DrawingSettings {
    AcDbObjectId clayer;
    AcDbObjectId celtype;
    AcDbObjectId textstyle;
    AcDbObjectId dimstyle;
    AcDbObjectId cmlstyle;
    AcDbObjectId currentSpace; // null: by tilemode
    AcCmColor cecolor;
    AcDb::LineWeight celweight = AcDb::kLnWtByLayer;
    double celtscale = 1.0;
    double ltscale = 1.0;
    double textsize = 2.5;
    double dimscale = 1.0;
    double elevation = 0.0;
    double thickness = 0.0;
    double pdsize = 0.0;
    double angbase = 0.0; // radians
    AcGePoint3d extmin{1e20, 1e20, 1e20};
    AcGePoint3d extmax{-1e20, -1e20, -1e20};
    AcGePoint3d insbase;
    AcGePoint3d ucsorg;
    AcGeVector3d ucsxdir = AcGeVector3d::kXAxis;
    AcGeVector3d ucsydir = AcGeVector3d::kYAxis;
    // The same of paper space.
    AcGePoint3d pucsorg;
    AcGeVector3d pucsxdir = AcGeVector3d::kXAxis;
    AcGeVector3d pucsydir = AcGeVector3d::kYAxis;
    AcGePoint2d limmin;
    AcGePoint2d limmax{420.0, 297.0};
    AcGePoint2d plimmin;
    AcGePoint2d plimmax{420.0, 297.0};
    // What is looked at; files tell the first viewport of model space.
    AcDbObjectId tiledViewport;    // record of the viewport table; null: its first active one
    AcDbObjectId floatingViewport; // through which model space is edited; null: the sheet itself
    short insunits = static_cast<short>(DrawingUnits::kMillimeters);
    short lunits = 2;
    short luprec = 4;
    short aunits = 0;
    short auprec = 0;
    short measurement = 1;
    short pdmode = 0;
    short attmode = 1;
    bool angdir = false; // angles run clockwise
    bool fillmode = true;
    bool mirrtext = false;
    bool psltscale = true;
    bool tilemode = true;
    bool limcheck = false;
    bool lineWeightDisplay = false;
};

} // namespace headless

class AcDbDatabase : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDatabase);

    /// @param buildDefaultDrawing  false makes an empty database, to be filled from a file.
    explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
    /// Deletes all objects; ids of this database must not be used again.
    ~AcDbDatabase() override;
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;

    // Open one of the tables; eNullObjectId when the database has none yet.
    Acad::ErrorStatus getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getDimStyleTable(AcDbDimStyleTable*& table,
                                       AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& table,
                                       AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getTextStyleTable(AcDbTextStyleTable*& table,
                                        AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getRegAppTable(AcDbRegAppTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getUCSTable(AcDbUCSTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getViewTable(AcDbViewTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getViewportTable(AcDbViewportTable*& table,
                                       AcDb::OpenMode mode = AcDb::kForRead);
    // The same under one name.
    Acad::ErrorStatus getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbDimStyleTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbRegAppTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbUCSTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbViewTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbViewportTable*& table, AcDb::OpenMode mode);

    AcDbObjectId blockTableId() const { return tables_.block; }
    AcDbObjectId dimStyleTableId() const { return tables_.dimStyle; }
    AcDbObjectId layerTableId() const { return tables_.layer; }
    AcDbObjectId linetypeTableId() const { return tables_.linetype; }
    AcDbObjectId textStyleTableId() const { return tables_.textStyle; }
    AcDbObjectId regAppTableId() const { return tables_.regApp; }
    AcDbObjectId UCSTableId() const { return tables_.ucs; }
    AcDbObjectId viewTableId() const { return tables_.view; }
    AcDbObjectId viewportTableId() const { return tables_.viewport; }

    AcDbObjectId namedObjectsDictionaryId() const { return namedObjects_; }
    Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& dictionary,
                                                AcDb::OpenMode mode = AcDb::kForRead);
    AcDbObjectId groupDictionaryId() const;
    Acad::ErrorStatus getGroupDictionary(AcDbDictionary*& dictionary,
                                         AcDb::OpenMode mode = AcDb::kForRead);
    AcDbObjectId mLStyleDictionaryId() const;
    Acad::ErrorStatus getMLStyleDictionary(AcDbDictionary*& dictionary,
                                           AcDb::OpenMode mode = AcDb::kForRead);
    AcDbObjectId layoutDictionaryId() const;

    // Records that every drawing has; null while the database lacks them.
    AcDbObjectId modelSpaceId() const;
    AcDbObjectId paperSpaceId() const;
    AcDbObjectId layerZero() const;
    AcDbObjectId byLayerLinetype() const;
    AcDbObjectId byBlockLinetype() const;
    AcDbObjectId continuousLinetype() const;

    /// The space that new entities go to: what was set, else model or paper space by tilemode.
    AcDbObjectId currentSpaceId() const;
    Acad::ErrorStatus setCurrentSpaceId(AcDbObjectId block);

    /// The id of the object with that handle. eUnknownHandle when there is none, unless it is to be
    /// created: then an id is announced for it (eHandleExists when an object has it already).
    Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound,
                                      const AcDbHandle& handle, Adesk::UInt32 xrefId = 0);
    /// Clones objects of this drawing, and what they own, into a block, table or dictionary of it.
    /// References among what is cloned lead to the clones. Records of a name that the table has are
    /// not cloned. eNullObjectId, eWasErased, eWrongDatabase, eWrongObjectType or eNotAnEntity for
    /// what the owner does not take, cloning nothing; else as an owner that somebody has open.
    /// @param deferTranslation  leaves references as they are until the next call with the mapping.
    Acad::ErrorStatus deepCloneObjects(const AcDbObjectIdArray& ids, const AcDbObjectId& owner,
                                       AcDbIdMapping& mapping, bool deferTranslation = false);
    /// The same into another drawing. Layers, linetypes, styles and blocks that the clones need
    /// come along, by name; eNotApplicable for kinds that the host does not model.
    /// @param duplicates  what becomes of records whose name is there: kDrcReplace takes the new
    ///                    state over, kDrcMangleName renames the new one, else the old one serves.
    Acad::ErrorStatus wblockCloneObjects(const AcDbObjectIdArray& ids, const AcDbObjectId& owner,
                                         AcDbIdMapping& mapping,
                                         AcDb::DuplicateRecordCloning duplicates,
                                         bool deferTranslation = false);

    /// Makes a new object resident without an owner; it stays open for writing.
    Acad::ErrorStatus addAcDbObject(AcDbObject* object);
    Acad::ErrorStatus addAcDbObject(AcDbObjectId& id, AcDbObject* object);
    /// The handle that the next new object gets.
    AcDbHandle handseed() const { return AcDbHandle(handles_.seed()); }
    /// A smaller seed than now changes nothing.
    Acad::ErrorStatus setHandseed(const AcDbHandle& seed);
    long approxNumObjects() const;

    /// Whether changes are recorded so that they can be undone: not so in a new database, until it
    /// becomes a document.
    bool undoRecording() const;
    Acad::ErrorStatus disableUndoRecording(bool disable);
    /// The session's, which brackets the changes of all drawings.
    AcDbTransactionManager* transactionManager() const;

    // Write the drawing as DXF, the only kind of file here; it stays the drawing of the file that
    // it has. eInvalidInput without a name, eCantOpenFile when the file cannot be written.
    Acad::ErrorStatus saveAs(const ACHAR* fileName);
    Acad::ErrorStatus dxfOut(const ACHAR* fileName, int precision = 16);

    /// The drawing's file; empty text and eOk for one that has none.
    Acad::ErrorStatus getFilename(const ACHAR*& name) const;

    // Settings, by the names of their system variables. Ids must be of this database
    // (eWrongDatabase) and of records of the right table (eWrongObjectType).
    AcDbObjectId clayer() const { return settings_.clayer; }
    Acad::ErrorStatus setClayer(AcDbObjectId layer);
    AcDbObjectId celtype() const { return settings_.celtype; }
    Acad::ErrorStatus setCeltype(AcDbObjectId linetype);
    AcDbObjectId textstyle() const { return settings_.textstyle; }
    Acad::ErrorStatus setTextstyle(AcDbObjectId style);
    AcDbObjectId dimstyle() const { return settings_.dimstyle; }
    Acad::ErrorStatus setDimstyle(AcDbObjectId style);
    AcDbObjectId cmlstyleID() const { return settings_.cmlstyle; }
    Acad::ErrorStatus setCmlstyleID(AcDbObjectId style);
    AcCmColor cecolor() const { return settings_.cecolor; }
    Acad::ErrorStatus setCecolor(const AcCmColor& color);
    AcDb::LineWeight celweight() const { return settings_.celweight; }
    Acad::ErrorStatus setCelweight(AcDb::LineWeight weight);
    double celtscale() const { return settings_.celtscale; }
    /// eOutOfRange unless above 0; so for ltscale, textsize.
    Acad::ErrorStatus setCeltscale(double scale);
    double ltscale() const { return settings_.ltscale; }
    Acad::ErrorStatus setLtscale(double scale);
    double textsize() const { return settings_.textsize; }
    Acad::ErrorStatus setTextsize(double size);
    double dimscale() const { return settings_.dimscale; }
    double elevation() const { return settings_.elevation; }
    double thickness() const { return settings_.thickness; }
    double pdsize() const { return settings_.pdsize; }
    short pdmode() const { return settings_.pdmode; }
    double angbase() const { return settings_.angbase; }
    bool angdir() const { return settings_.angdir; }
    short lunits() const { return settings_.lunits; }
    short luprec() const { return settings_.luprec; }
    short aunits() const { return settings_.aunits; }
    short auprec() const { return settings_.auprec; }
    short measurement() const { return settings_.measurement; }
    bool tilemode() const { return settings_.tilemode; }
    bool fillmode() const { return settings_.fillmode; }
    bool mirrtext() const { return settings_.mirrtext; }
    bool psltscale() const { return settings_.psltscale; }
    short insunits() const { return settings_.insunits; }
    Acad::ErrorStatus setInsunits(short units);
    /// As the file says; least beyond greatest in a drawing without entities.
    AcGePoint3d extmin() const { return settings_.extmin; }
    AcGePoint3d extmax() const { return settings_.extmax; }
    AcGePoint2d limmin() const { return settings_.limmin; }
    AcGePoint2d limmax() const { return settings_.limmax; }
    AcGePoint3d insbase() const { return settings_.insbase; }
    AcGePoint3d ucsorg() const { return settings_.ucsorg; }
    AcGeVector3d ucsxdir() const { return settings_.ucsxdir; }
    AcGeVector3d ucsydir() const { return settings_.ucsydir; }

    // The host's own.

    const headless::DrawingSettings& settings() const { return settings_; }
    /// To be changed: what they are is noted for undo.
    headless::DrawingSettings& settingsForWrite();
    /// Swaps all settings, noting nothing.
    void exchangeSettings(headless::DrawingSettings& settings) { std::swap(settings_, settings); }
    /// Records that every drawing has are looked up anew: names changed.
    void forgetFixedRecords() { fixed_ = {}; }
    /// Null for a drawing that never recorded and was in no transaction.
    headless::UndoJournal* undoJournal() const { return undoJournal_.get(); }
    headless::HighlightSet& highlights() { return highlights_; }
    const headless::HighlightSet& highlights() const { return highlights_; }
    headless::HeaderVariables& headerVariables() { return header_; }
    const headless::HeaderVariables& headerVariables() const { return header_; }
    void setFilename(std::wstring name) { filename_ = std::move(name); }
    /// Keeps a file's bytes alive, to which source spans and header values refer.
    /// @param archive  reads records of that file again; lives as long as `owner`. May be null.
    void keepSource(std::shared_ptr<const void> owner, std::string_view bytes,
                    const headless::RecordArchive* archive = nullptr);
    const headless::RecordArchive* recordArchive() const { return recordArchive_; }
    const std::shared_ptr<const void>& sourceOwner() const { return sourceOwner_; }
    std::string_view sourceBytes() const { return sourceBytes_; }
    /// The bytes of a record; empty for a span beyond the file.
    std::string_view sourceOf(headless::SourceSpan span) const;
    /// True when the id points into this database, tried without following it.
    bool ownsStub(const AcDbStub* stub) const { return handles_.owns(stub); }

private:
    friend class headless::DbState;
    friend class headless::DrawingRoots;
    friend class headless::Residence;

    struct TableIds {
        AcDbObjectId block;
        AcDbObjectId dimStyle;
        AcDbObjectId layer;
        AcDbObjectId linetype;
        AcDbObjectId textStyle;
        AcDbObjectId regApp;
        AcDbObjectId ucs;
        AcDbObjectId view;
        AcDbObjectId viewport;
    };

    AcDbObjectId fixedRecord(AcDbObjectId& cached, AcDbObjectId table, const ACHAR* name) const;
    AcDbObjectId rootEntry(const ACHAR* key) const;
    using Settings = headless::DrawingSettings;
    Acad::ErrorStatus setRecord(AcDbObjectId Settings::*setting, AcDbObjectId id,
                                const AcRxClass* kind);
    Acad::ErrorStatus setPositive(double Settings::*setting, double value);

    headless::HandleTable handles_{this};
    TableIds tables_;
    AcDbObjectId namedObjects_;
    // Found by name once and then remembered: they are asked for with every entity.
    struct FixedIds {
        AcDbObjectId modelSpace;
        AcDbObjectId paperSpace;
        AcDbObjectId layerZero;
        AcDbObjectId byLayer;
        AcDbObjectId byBlock;
        AcDbObjectId continuous;
    };
    mutable FixedIds fixed_;
    Settings settings_;
    std::unique_ptr<headless::UndoJournal> undoJournal_;
    headless::HighlightSet highlights_;
    headless::HeaderVariables header_;
    std::wstring filename_;
    std::shared_ptr<const void> sourceOwner_;
    std::string_view sourceBytes_;
    const headless::RecordArchive* recordArchive_ = nullptr;
    std::vector<headless::SourceSpan> deletedRecords_;
    bool ending_ = false;
    headless::DbState* state_;
};
