#pragma once

#include <gio/gio.h>

extern "C" { // which the header leaves out for the functions that it calls by name
#include <nautilus-extension.h>
}

/// The file manager that loads MenuExtension.cpp: Nautilus.
#define HOST(name)                                                                                           \
    nautilus_##name // NOLINT(cppcoreguidelines-macro-usage): each has names with a prefix of its own
using HostFile = NautilusFileInfo;
using HostMenuItem = NautilusMenuItem;
using HostMenuProviderInterface = NautilusMenuProviderInterface;

/// `makeItems(files)` is asked whenever a menu for files opens.
template <auto makeItems>
void provideItems(HostMenuProviderInterface& interface) {
    interface.get_file_items = [](NautilusMenuProvider*, GList* files) {
        return makeItems(files);
    };
}
