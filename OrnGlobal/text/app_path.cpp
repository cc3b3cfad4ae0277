#include "text/app_path.h"

#include "OrnCore/product_folder.h"

CString GetAppPath() { return orncore::productFolder(); }
