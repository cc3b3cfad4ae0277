// MFC as a program includes it.
#pragma once

#include "afx.h"
#include "afxcoll.h"
