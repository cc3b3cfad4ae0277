// Reading and writing the product's own data: values in lists of result buffers, and points in the
// extended data of entities.
#pragma once

#include <adsdef.h>
#include <afxwin.h>
#include <dbid.h>
#include <gepnt3d.h>

class AFX_EXT_CLASS rwXData {
public:
    // Append a value to a list, which a null `chain` begins; the list is made for xrecords, and the
    // caller frees it with acutRelRb. Values follow the name of their application, which is written
    // where it changes; a null or empty name is not written.
    static void addXdata(wchar_t const* appName, resbuf*& chain, int value);
    static void addXdata(wchar_t const* appName, resbuf*& chain, double value);
    static void addXdata(wchar_t const* appName, resbuf*& chain, CString const& value);

    // Read the value at `cursor` and step behind it, passing over names of applications. Not 0 when
    // there was one of that kind; else `value` stays as it is. At the list's end `cursor` is null.
    static int getXdata(resbuf*& cursor, int& value);
    static int getXdata(resbuf*& cursor, double& value);
    static int getXdata(resbuf*& cursor, CString& value);

    /// The point that an entity keeps under an application's name, in world coordinates; the origin
    /// when there is none, or when the entity cannot be opened for reading.
    static AcGePoint3d ReadXdataPnt(const AcDbObjectId& id, const CString& key);
    /// Keeps a point with an entity under an application's name, which is registered in the
    /// entity's drawing where needed. It takes the place of what the entity had under that name.
    /// 0 when the entity cannot be opened for writing or the name cannot be registered.
    static int WriteXdataPnt(const AcDbObjectId& id, const CString& key, const AcGePoint3d& point);
};
