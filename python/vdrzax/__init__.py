"""The control library of the virtual distributed router, for Python.

    vdr = vdrzax.Client()
    vdr.instances.set("edge-1", second=10, flag=1)
    for instance in vdr.instances:
        print(instance.name, instance.word64)

Objects and verbs are those of vdrctl; records have the fields of the C header.
"""
from . import _records
from ._arguments import Ipv4, Ipv4Prefix, Ipv6, Ipv6Prefix, MacAddress
from ._client import Client
from ._errors import Error, NoDevice, NotFound
from ._fields import Record
from ._functions import VERSION as __version__
from ._lists import Records
from ._records import *  # noqa: F403

__all__ = ["Client", "Error", "Ipv4", "Ipv4Prefix", "Ipv6", "Ipv6Prefix", "MacAddress", "NoDevice",
           "NotFound", "Record", "Records", "__version__"]
__all__ += _records.__all__
