#include "frame/auto_set_sys_var.h"

#include "OrnCore/rw_sys_var.h"

AutoSetSysVar::AutoSetSysVar(const CString& name, int value) : name_(name) {
    rwSysVar::GetVar(name_, &saved_);
    rwSysVar::SetVar(name_, value);
}

AutoSetSysVar::~AutoSetSysVar() { rwSysVar::SetVar(name_, saved_); }
