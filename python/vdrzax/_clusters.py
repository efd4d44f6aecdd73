"""Bridge clusters, BFD ports and the local transport node."""
from typing import Optional

from ._arguments import MacAddress, exact_bytes
from ._library import Library
from ._lists import Records
from ._object import Object
from ._records import (BridgeBfdSessionRecord, BridgeClusterNodeRecord, BridgeClusterRecord,
                       BridgeEndpointRecord)


class ClusterNodes(Object):
    """Nodes of bridge clusters."""

    def __call__(self, cluster: Optional[str] = None) -> Records[BridgeClusterNodeRecord]:
        return self._library.listed(BridgeClusterNodeRecord, "VDRZAX_GetBridgeClusterNodes",
                                    cluster)

    def add(self, cluster: str, node: str, mac: MacAddress) -> None:
        if mac is None:
            raise TypeError("VDRZAX_BridgeClusterNodeSet: mac is required, not None")
        self._library.send("VDRZAX_BridgeClusterNodeSet", cluster, node, mac, 1)

    def delete(self, cluster: str, node: str) -> None:
        self._library.send("VDRZAX_BridgeClusterNodeSet", cluster, node, None, 0)


class ClusterEndpoints(Object):
    """Endpoints of bridge clusters."""

    def __call__(self, instance: Optional[str] = None) -> Records[BridgeEndpointRecord]:
        return self._library.listed(BridgeEndpointRecord, "VDRZAX_GetBridgeEndpoints", instance)


class ClusterBfd(Object):
    """BFD of bridge clusters."""

    def sessions(self, instance: Optional[str] = None) -> Records[BridgeBfdSessionRecord]:
        """List the sessions. The library reserves 2 x 111820800 bytes of address space for them."""
        return self._library.listed(BridgeBfdSessionRecord, "VDRZAX_GetBridgeBFDSessions", instance)

    def set_profile(self, cluster: str, profile: int, *, value1: int = 0, value2: int = 0) -> None:
        """Set the profile, one byte, for the high availability of a bridge cluster."""
        self._library.send("VDRZAX_BridgeClusterBfdHAProfileSet", cluster, profile, value1, value2)


class Clusters(Object):
    """Bridge clusters, named by their owner."""

    def __init__(self, library: Library) -> None:
        super().__init__(library)
        self.nodes = ClusterNodes(library)
        self.endpoints = ClusterEndpoints(library)
        self.bfd = ClusterBfd(library)

    def __call__(self, cluster: Optional[str] = None) -> Records[BridgeClusterRecord]:
        return self._library.listed(BridgeClusterRecord, "VDRZAX_GetBridgeClusters", cluster)

    def create(self, cluster: str) -> None:
        self._library.send("VDRZAX_BridgeClusterSet", cluster, 1)

    def delete(self, cluster: str) -> None:
        self._library.send("VDRZAX_BridgeClusterSet", cluster, 0)

    def flush(self, cluster: Optional[str] = None, *, all: bool = False) -> None:
        """Flush the named cluster, or all of them."""
        self._library.send("VDRZAX_FlushBridgeCluster", cluster, bool(all))

    def set_debug(self, level: int, cluster: Optional[str] = None) -> None:
        """Set the debug level, one byte."""
        self._library.send("VDRZAX_SetBridgeClusterDebug", cluster, level)


class BfdPorts(Object):
    """BFD port connections."""

    def __call__(self) -> bytes:
        """The connections, in the kernel's own layout: 131072 bytes."""
        return self._library.raw("VDRZAX_GetBFDPortConnections")

    def plumb(self, port: str, *, second_name: str = "", mac: Optional[MacAddress] = None) -> None:
        """Create a connection. The second name has at most 15 bytes."""
        self._library.send("VDRZAX_PlumbBFDPortConnection", port, second_name, mac)

    def unplumb(self, port: str) -> None:
        self._library.send("VDRZAX_UnPlumbBFDPortConnection", port)


class TransportNode(Object):
    """The local transport node. Its bytes are at most 64, with zeros behind."""

    def show(self, *, selector: int = 0) -> bytes:
        """The node, in the kernel's own layout: 2048 bytes."""
        return self._library.raw("VDRZAX_BridgeGetLocalTransportNode", selector)

    def set(self, name: str, *, second_name: str = "", third_name: str = "", value: int = 0,
            bytes: bytes = b"") -> None:
        """Set the node. The third name has at most 15 bytes."""
        self._library.fill("VDRZAX_BridgeLocalTransportNodeSet", exact_bytes(bytes, 64, "bytes"),
                           name, second_name, third_name, value, 1)

    def clear(self, name: str, *, second_name: str = "", third_name: str = "", value: int = 0,
              bytes: bytes = b"") -> None:
        """Clear the node that was set so."""
        self._library.fill("VDRZAX_BridgeLocalTransportNodeSet", exact_bytes(bytes, 64, "bytes"),
                           name, second_name, third_name, value, 0)
