// How a table is drawn again: what its three kinds of text look like.
#pragma once

#include <afxwin.h>

/// One entry in each group of three for each kind of text of the drawn table.
struct TableParam {
    CString textStyles[3] = {L"QUILL_Rein", L"QUILL_Rein", L"QUILL_Rein"};
    double sizes[3] = {2.5, 2.5, 2.5};
    double ratios[3] = {0.8, 0.8, 0.8}; // of width
    double otherSizes[3] = {2.5, 2.5, 2.5};
    int settings[8] = {4, 3, 7, 6, 11, 1, 1, 1};
};
