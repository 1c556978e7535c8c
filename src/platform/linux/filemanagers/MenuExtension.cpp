// The entry "Send to Android" in the menus of a file manager that takes such entries from libraries alone.
// The library is loaded by the file manager, whose functions it uses, and has nothing of the program: it asks
// the running one, which the bus starts if need be, to open the files (org.freedesktop.Application). All on
// the file manager's main thread, which waits for nobody.
#include HOST_HEADER

#include <gio/gio.h>

#include <memory>

namespace {

template <typename Type, auto release>
struct Release {
    void operator()(Type* thing) const { release(thing); }
};
using Location = std::unique_ptr<GFile, Release<GFile, g_object_unref>>;
using Text = std::unique_ptr<char, Release<char, g_free>>;
using TextList = std::unique_ptr<char*, Release<char*, g_strfreev>>;

/// The address of a file that can be sent: a regular one with a path, byte for byte; no folder and nothing
/// that the system knows by no path, such as what lies in the Trash. Null for what can't.
char* addressOf(HostFile* file) {
    if (HOST(file_info_get_file_type)(file) != G_FILE_TYPE_REGULAR) {
        return nullptr;
    }
    const Location location(HOST(file_info_get_location)(file));
    const Text path(g_file_get_path(location.get()));
    return path ? g_filename_to_uri(path.get(), nullptr, nullptr) : nullptr;
}

/// The addresses of all files, or nothing where one of them can't be sent.
TextList addressesOf(GList* files) {
    auto* const addresses = g_ptr_array_new_with_free_func(g_free);
    for (const GList* row = files; row != nullptr; row = row->next) {
        auto* const address = addressOf(static_cast<HostFile*>(row->data));
        if (address == nullptr) {
            g_ptr_array_free(addresses, TRUE);
            return {};
        }
        g_ptr_array_add(addresses, address);
    }
    g_ptr_array_add(addresses, nullptr);
    g_ptr_array_set_free_func(addresses, nullptr);
    return TextList(reinterpret_cast<char**>(g_ptr_array_free(addresses, FALSE)));
}

/// The program has answered, or never will. The connection was kept for this: without it the call would not
/// leave.
void endCall(GObject* bus, GAsyncResult* result, gpointer /*data*/) {
    if (auto* const answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, nullptr)) {
        g_variant_unref(answer);
    }
}

/// The bus is there: the call.
void openOverBus(GObject* /*source*/, GAsyncResult* result, gpointer addresses) {
    const TextList files(static_cast<char**>(addresses));
    if (auto* const bus = g_bus_get_finish(result, nullptr)) {
        g_dbus_connection_call(bus, "org.brenvale.Brenvale", "/org/brenvale/Brenvale",
                               "org.freedesktop.Application", "Open",
                               g_variant_new("(^asa{sv})", files.get(), nullptr), nullptr,
                               G_DBUS_CALL_FLAGS_NONE, -1, nullptr, endCall, nullptr);
        g_object_unref(bus);
    }
}

/// The entry was chosen.
void send(HostMenuItem* /*item*/, gpointer addresses) {
    g_bus_get(G_BUS_TYPE_SESSION, nullptr, openOverBus,
              static_cast<gpointer>(g_strdupv(static_cast<char**>(addresses))));
}

void releaseAddresses(gpointer addresses, GClosure* /*closure*/) {
    g_strfreev(static_cast<char**>(addresses));
}

GList* makeItems(GList* files) {
    auto addresses = addressesOf(files);
    if (!addresses || *addresses == nullptr) {
        return nullptr;
    }
    auto* const item = HOST(menu_item_new)("Brenvale::send", "Send to Android",
                                           "Send the selected files to the phone", "org.brenvale.Brenvale");
    g_signal_connect_data(item, "activate", reinterpret_cast<GCallback>(send),
                          static_cast<gpointer>(addresses.release()), releaseAddresses, GConnectFlags{});
    return g_list_append(nullptr, item);
}

void setUpInterface(gpointer interface, gpointer /*data*/) {
    provideItems<makeItems>(*static_cast<HostMenuProviderInterface*>(interface));
}

/// The one type of this library, since it was loaded.
GType& registeredType() {
    static GType type = G_TYPE_INVALID;
    return type;
}

} // namespace

// What the file manager calls, by name.

void HOST(module_initialize)(GTypeModule* module) {
    GTypeInfo object{};
    object.class_size = sizeof(GObjectClass);
    object.instance_size = sizeof(GObject);
    registeredType() =
        g_type_module_register_type(module, G_TYPE_OBJECT, "BrenvaleMenu", &object, GTypeFlags{});
    const GInterfaceInfo interface{setUpInterface, nullptr, nullptr};
    g_type_module_add_interface(module, registeredType(), HOST(menu_provider_get_type)(), &interface);
}

void HOST(module_shutdown)() {}

void HOST(module_list_types)(const GType** types, int* num_types) { // by the file managers' own names
    *types = &registeredType();
    *num_types = 1;
}
