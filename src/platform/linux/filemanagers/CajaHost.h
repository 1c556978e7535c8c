#pragma once

#include <gio/gio.h>

/// The file manager that loads MenuExtension.cpp: Caja. What is used of its interface is declared here, as
/// its own headers need all of the toolkit's.
struct CajaFileInfo;
struct CajaMenuItem;
struct CajaMenuProvider;
struct CajaWindow;

struct CajaMenuProviderIface {
    GTypeInterface g_iface;
    GList* (*get_file_items)(CajaMenuProvider* provider, CajaWindow* window, GList* files);
    GList* (*get_background_items)(CajaMenuProvider* provider, CajaWindow* window, CajaFileInfo* folder);
    GList* (*get_toolbar_items)(CajaMenuProvider* provider, CajaWindow* window, CajaFileInfo* folder);
};

extern "C" {
GType caja_menu_provider_get_type();
CajaMenuItem* caja_menu_item_new(const char* name, const char* label, const char* tip, const char* icon);
GFileType caja_file_info_get_file_type(CajaFileInfo* file);
GFile* caja_file_info_get_location(CajaFileInfo* file);
G_MODULE_EXPORT void caja_module_initialize(GTypeModule* module);
G_MODULE_EXPORT void caja_module_shutdown();
G_MODULE_EXPORT void caja_module_list_types(const GType** types, int* num_types);
}

#define HOST(name)                                                                                           \
    caja_##name // NOLINT(cppcoreguidelines-macro-usage): each has names with a prefix of its own
using HostFile = CajaFileInfo;
using HostMenuItem = CajaMenuItem;
using HostMenuProviderInterface = CajaMenuProviderIface;

/// `makeItems(files)` is asked whenever a menu for files opens.
template <auto makeItems>
void provideItems(HostMenuProviderInterface& interface) {
    interface.get_file_items = [](CajaMenuProvider*, CajaWindow*, GList* files) {
        return makeItems(files);
    };
}
