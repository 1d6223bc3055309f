// The system's own header, without what hides or renames ours.
//
// Inside namespace tolvek the system's calls are written with a leading "::", because
// some of ours have the same names. UNICODE is never defined; every call names its
// wide form.
#pragma once
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

// Names of our own, in registry.h and process_list.h.
#undef HKEY_LOCAL_MACHINE
#undef TH32CS_SNAPPROCESS
