#include <vdrzax/instance.h>

#include "commands.h"
#include "commands/reading.h"

namespace vdrctl {

namespace {

constexpr Parameter kValue = U32("VALUE", "The new value; the kernel decides what it means");

constexpr Object kObjects[] = {
    {"log-level", "Log level of the datapath"},
    {"extended-log-level", "Extended log level of the datapath"},
    {"stats-level", "Statistics level of the datapath"},
    {"tx-dispatch-queue-size", "Size of the transmit dispatch queue"},
};

constexpr Command kCommands[] = {
    {"log-level",
     "get",
     "Print the level",
     {"VDRZAX_GetLogLevel"},
     {9},
     {},
     ShowsNumber<VDRZAX_GetLogLevel>,
     NumberReply("level")},
    {"log-level",
     "set",
     "Change the level",
     {"VDRZAX_SetLogLevel"},
     {10},
     {kValue},
     Run<VDRZAX_SetLogLevel>},
    {"extended-log-level",
     "get",
     "Print the level",
     {"VDRZAX_GetExtendedLogLevel"},
     {11},
     {},
     ShowsNumber<VDRZAX_GetExtendedLogLevel>,
     NumberReply("level")},
    {"extended-log-level",
     "set",
     "Change the level",
     {"VDRZAX_SetExtendedLogLevel"},
     {12},
     {kValue},
     Run<VDRZAX_SetExtendedLogLevel>},
    {"stats-level",
     "get",
     "Print the level",
     {"VDRZAX_GetStatsLevel"},
     {13},
     {},
     ShowsNumber<VDRZAX_GetStatsLevel>,
     NumberReply("level")},
    {"stats-level",
     "set",
     "Change the level",
     {"VDRZAX_SetStatsLevel"},
     {14},
     {kValue},
     Run<VDRZAX_SetStatsLevel>},
    {"tx-dispatch-queue-size",
     "get",
     "Print the size",
     {"VDRZAX_GetTxDispQueueSize"},
     {159},
     {},
     ShowsNumber<VDRZAX_GetTxDispQueueSize>,
     NumberReply("size")},
    {"tx-dispatch-queue-size",
     "set",
     "Change the size",
     {"VDRZAX_SetTxDispQueueSize"},
     {160},
     {kValue},
     Run<VDRZAX_SetTxDispQueueSize>},
    {"pre-unload",
     nullptr,
     "Tell the datapath that its kernel module is about to be unloaded",
     {"VDRZAX_PreUnload"},
     {42},
     {},
     Run<VDRZAX_PreUnload>},
};

}  // namespace

constinit const Family kSettingsFamily{kObjects, kCommands};

}  // namespace vdrctl
