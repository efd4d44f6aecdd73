"""The client: every object of the datapath, and the commands that have none."""
import ctypes
from typing import Optional

from ._arguments import in_range
from ._bridges import BridgeEndpoints, BridgeLifs, Bridges, Fdb
from ._clusters import BfdPorts, Clusters, TransportNode
from ._instances import Connections, ControlPlane, Datapath, Instances
from ._library import Library
from ._lifs import Lifs
from ._mapping import E2I, FlTables, Locale, PhysicalMacs
from ._multicast import Multicast
from ._object import Setting
from ._policies import LifPolicies, LifPolicyTables, Policies, PolicyTables
from ._records import IoctlEnvelope
from ._routes import (Arp, DemuxRoutes, Neighbours6, PathMtu6, ProxyArp, ProxyNeighbours6, Routes,
                      Routes6)
from ._services import FullSync, PublicIps, SoftRss


class Client:
    """The datapath, by the library.

    Objects and verbs are those of vdrctl. The client holds no state and nothing open; any number
    of threads may use one. `library` is the path of the library, else VDRZAX_LIBRARY in the environment
    names it, else the loader finds it. Raises ImportError when it can't be loaded.

    Each call is one command of the datapath. It raises ValueError or TypeError before anything is
    sent, and Error, NotFound or NoDevice when the command fails.
    """

    def __init__(self, library: Optional[str] = None) -> None:
        self._library = loaded = Library(library)
        self.instances = Instances(loaded)
        self.control_plane = ControlPlane(loaded)
        self.datapath = Datapath(loaded)
        self.connections = Connections(loaded)
        self.log_level = Setting(loaded, "VDRZAX_GetLogLevel", "VDRZAX_SetLogLevel")
        self.extended_log_level = Setting(loaded, "VDRZAX_GetExtendedLogLevel",
                                          "VDRZAX_SetExtendedLogLevel")
        self.stats_level = Setting(loaded, "VDRZAX_GetStatsLevel", "VDRZAX_SetStatsLevel")
        self.tx_dispatch_queue_size = Setting(loaded, "VDRZAX_GetTxDispQueueSize",
                                              "VDRZAX_SetTxDispQueueSize")
        self.lifs = Lifs(loaded)
        self.routes = Routes(loaded)
        self.routes6 = Routes6(loaded)
        self.demux_routes = DemuxRoutes(loaded)
        self.path_mtu6 = PathMtu6(loaded)
        self.arp = Arp(loaded)
        self.proxy_arp = ProxyArp(loaded)
        self.neighbours6 = Neighbours6(loaded)
        self.proxy_neighbours6 = ProxyNeighbours6(loaded)
        self.policies = Policies(loaded)
        self.policy_tables = PolicyTables(loaded)
        self.lif_policies = LifPolicies(loaded)
        self.lif_policy_tables = LifPolicyTables(loaded)
        self.bridges = Bridges(loaded)
        self.fdb = Fdb(loaded)
        self.bridge_lifs = BridgeLifs(loaded)
        self.bridge_endpoints = BridgeEndpoints(loaded)
        self.clusters = Clusters(loaded)
        self.bfd_ports = BfdPorts(loaded)
        self.transport_node = TransportNode(loaded)
        self.e2i = E2I(loaded)
        self.physical_macs = PhysicalMacs(loaded)
        self.locale = Locale(loaded)
        self.fl_tables = FlTables(loaded)
        self.multicast = Multicast(loaded)
        self.full_sync = FullSync(loaded)
        self.soft_rss = SoftRss(loaded)
        self.public_ips = PublicIps(loaded)

    def pre_unload(self) -> None:
        """Tell the datapath that its kernel module is about to be unloaded."""
        self._library.send("VDRZAX_PreUnload")

    def flush(self, target: int, *, selector1: int = 0, selector2: int = 0, selector3: int = 0,
              name: Optional[str] = None, value: int = 0) -> None:
        """Flush a table that the kernel selects from the arguments. A selector is one byte."""
        self._library.send("VDRZAX_GenericFlush", target, selector1, selector2, selector3, name,
                           value)

    def command(self, code: int, input: bytes = b"", *, capacity: int = 0) -> bytes:
        """Send any command by its code, and return what it replied, at most `capacity` bytes."""
        if not isinstance(input, (bytes, bytearray)):
            raise TypeError(f"input is bytes, not {type(input).__name__}")
        room = in_range("capacity", capacity, 0xFFFFFFFF)
        sent = ctypes.create_string_buffer(bytes(input), max(len(input), 1))
        reply = ctypes.create_string_buffer(max(room, 1))
        envelope = IoctlEnvelope(len(input), ctypes.addressof(sent) if input else None, room,
                                 ctypes.addressof(reply) if room else None)
        self._library.send("VDRZAXIoctl", code, ctypes.byref(envelope))
        return reply.raw[:min(envelope.outLength, room)]
