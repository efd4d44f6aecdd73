#include <vdrzax/instance.h>

#include "commands.h"
#include "reading.h"

namespace vdrctl {

namespace {

constexpr char kLevel[] = "level";
constexpr char kSize[] = "size";

constexpr Parameter kValue = U32("VALUE", "The new value; the kernel decides what it means");

constexpr Object kObjects[] = {
    {"log-level", "Log level of the datapath"},
    {"extended-log-level", "Extended log level of the datapath"},
    {"stats-level", "Statistics level of the datapath"},
    {"tx-dispatch-queue-size", "Size of the transmit dispatch queue"},
};

constexpr Command kCommands[] = {
    {"log-level", "get", "Print the level", {}, Run<PrintNumber<VDRZAX_GetLogLevel, kLevel>>},
    {"log-level", "set", "Change the level", {kValue}, Run<VDRZAX_SetLogLevel>},
    {"extended-log-level",
     "get",
     "Print the level",
     {},
     Run<PrintNumber<VDRZAX_GetExtendedLogLevel, kLevel>>},
    {"extended-log-level", "set", "Change the level", {kValue}, Run<VDRZAX_SetExtendedLogLevel>},
    {"stats-level", "get", "Print the level", {}, Run<PrintNumber<VDRZAX_GetStatsLevel, kLevel>>},
    {"stats-level", "set", "Change the level", {kValue}, Run<VDRZAX_SetStatsLevel>},
    {"tx-dispatch-queue-size",
     "get",
     "Print the size",
     {},
     Run<PrintNumber<VDRZAX_GetTxDispQueueSize, kSize>>},
    {"tx-dispatch-queue-size", "set", "Change the size", {kValue}, Run<VDRZAX_SetTxDispQueueSize>},
    {"pre-unload",
     nullptr,
     "Tell the datapath that its kernel module is about to be unloaded",
     {},
     Run<VDRZAX_PreUnload>},
};

}  // namespace

constinit const Family kSettingsFamily{kObjects, kCommands};

}  // namespace vdrctl
