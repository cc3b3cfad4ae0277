#include "component/drawing_styles.h"

#include <memory>

#include <dbdict.h>
#include <dbxrecrd.h>

#include "component/completed.h"
#include "component/record_key.h"
#include "component/style_record.h"
#include "frame/object_handle.h"
#include "frame/working_database.h"

namespace component {
namespace {

constexpr const wchar_t* kDictionary = L"KELMOR-LAYER";

AcDbObjectId rootOf(AcDbDatabase* db) {
    return db == nullptr ? AcDbObjectId::kNull : db->namedObjectsDictionaryId();
}

void readStyle(const wchar_t* name, AcDbObjectId id, ComponentMap& styles) {
    const ReadHandle<AcDbXrecord> record(id);
    if (!record) return;
    resbuf* values = nullptr;
    if (record->rbChain(&values) != Acad::eOk) return;
    const frame::ResbufChain chain(values);
    CString key = name;
    Common::RecoverRecordKey(key);
    styles.insert_or_assign(key, styleOfRecord(values));
}

void readStyles(ComponentMap& styles) {
    AcDbObjectId stored;
    {
        const ReadHandle<AcDbDictionary> root(rootOf(frame::orWorking(nullptr)));
        if (!root || root->getAt(kDictionary, stored) != Acad::eOk) return;
    }
    const ReadHandle<AcDbDictionary> dictionary(stored);
    if (!dictionary) return;
    const std::unique_ptr<AcDbDictionaryIterator> entry(dictionary->newIterator());
    for (; !entry->done(); entry->next())
        readStyle(entry->name(), entry->objectId(), styles);
}

/// Erases the dictionary with its records.
void eraseStyles(AcDbObjectId id) {
    const WriteHandle<AcDbObject> stored(id);
    if (!stored) return;
    // Only what a dictionary owns goes along with it, and those of other writers need not own.
    if (auto* dictionary = AcDbDictionary::cast(stored.get()))
        dictionary->setTreatElementsAsHard(true);
    stored->erase();
}

/// A new dictionary in the place of the old one; null when the host refuses.
AcDbObjectId renewDictionary(AcDbDatabase* db) {
    const WriteHandle<AcDbDictionary> root(rootOf(db));
    if (!root) return AcDbObjectId::kNull;
    AcDbObjectId id;
    if (root->getAt(kDictionary, id) == Acad::eOk) eraseStyles(id);
    auto made = std::make_unique<AcDbDictionary>();
    if (root->setAt(kDictionary, made.get(), id) != Acad::eOk) return AcDbObjectId::kNull;
    AcDbDictionary* const dictionary = made.release();
    dictionary->setTreatElementsAsHard(true);
    dictionary->close();
    return id;
}

void addRecord(AcDbDictionary& dictionary, const CString& name) {
    auto made = std::make_unique<AcDbXrecord>();
    AcDbObjectId id;
    if (dictionary.setAt(name, made.get(), id) == Acad::eOk) made.release()->close();
}

void storeStyle(AcDbDictionary& dictionary, const CString& name, const ComponentInfo& style) {
    if (!dictionary.has(name)) addRecord(dictionary, name);
    AcDbObjectId id;
    if (dictionary.getAt(name, id) != Acad::eOk) return;
    const WriteHandle<AcDbXrecord> record(id);
    if (record) record->setFromRbChain(*recordValues(style));
}

} // namespace

ComponentMap drawingStyles() {
    ComponentMap styles;
    return completed([&] { readStyles(styles); }) ? styles : ComponentMap();
}

void storeStyles(const ComponentMap& styles, AcDbDatabase* db) {
    // What does not complete leaves the styles stored so far.
    (void)completed([&] {
        const WriteHandle<AcDbDictionary> dictionary(renewDictionary(frame::orWorking(db)));
        if (!dictionary) return;
        for (const auto& [key, style] : styles)
            storeStyle(*dictionary, Common::FixRecordKey(key), style);
    });
}

} // namespace component
