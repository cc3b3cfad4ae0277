// Numbers of boards: texts in reading order, and clearing them again.
#pragma once

#include <vector>

#include <afxwin.h>
#include <dbmain.h>

namespace board {

struct NumberRequest {
    std::vector<CString> layers = {}; ///< Of the boards, in any case; empty: all layers.
    /// As SortPline::nSortMethod: 0 and 1 by columns from the left, each from the bottom or the
    /// top; 2 and 3 by rows from the bottom or the top, each from the left.
    int method = 3;
};

struct NumberedBoard {
    int number = 0;
    AcDbHandle outline = {};
    CString layer = {};   ///< Of the outline.
    AcDbHandle text = {}; ///< Null when the text could not be added.
};

/// Numbers the closed lightweight polylines of model space in reading order, from 1. Each gets a
/// text on the product's layer and in its style for numbers, in the middle of the board or at
/// another inner point, which the text also keeps in its extended data.
/// @param db  the working database; null numbers nothing.
AFX_EXT_API std::vector<NumberedBoard> numberBoards(AcDbDatabase* db, const NumberRequest& request);

/// Clears the numbers inside boards, see Common::ClearBoardNumber.
/// @param db         the current drawing; null clears nothing.
/// @param outlines   layers of the boards, in any case; empty: all layers.
/// @param numbers    layers of the texts, joined by ","; empty: the product's own for numbers.
/// @return           how many texts were erased.
AFX_EXT_API int clearBoardNumbers(AcDbDatabase* db, const std::vector<CString>& outlines,
                                  const CString& numbers);

} // namespace board
