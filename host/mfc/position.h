// Where an iteration over an MFC collection stands; null is the end.
#pragma once

struct __POSITION;
typedef __POSITION* POSITION;
