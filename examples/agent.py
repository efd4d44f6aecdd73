#!/usr/bin/python3
"""Makes the router instances and routes of this host those of a file, and prints what it changes.

usage: agent.py WANTED.json

    {"edge-1": {"second": 10, "routes": {"10.0.0.0/8": "192.0.2.1"}}}

What is not in the file is deleted. A command that the datapath has no memory for is tried again.
Exit status: 0, 1 for a failed command, 2 for a file that can't be used, 3 without a device.
"""
import errno
import ipaddress
import json
import sys
import time

import vdrzax

ATTEMPTS = 3
SECONDS_BETWEEN = 0.1


def main():
    if len(sys.argv) != 2:
        return complain(2, "usage: agent.py WANTED.json")
    try:
        with open(sys.argv[1], encoding="utf-8") as file:
            wanted = json.load(file)
    except (OSError, ValueError) as error:
        return complain(2, error)
    try:
        apply(vdrzax.Client(), wanted)
    except vdrzax.NoDevice as error:
        return complain(3, error)
    except (vdrzax.Error, TypeError, ValueError) as error:
        return complain(1, error)
    return 0


def complain(status, error):
    print(f"agent: {error}", file=sys.stderr)
    return status


def apply(vdr, wanted):
    found = {instance.name: instance.word64 for instance in vdr.instances}
    for name in sorted(found.keys() - wanted.keys()):
        change(f"delete {name}", vdr.instances.delete, name)
    for name, instance in wanted.items():
        second = instance.get("second", 0)
        if found.get(name) != second:
            change(f"set {name}", vdr.instances.set, name, second=second)
        apply_routes(vdr, name, instance.get("routes", {}))


def apply_routes(vdr, name, wanted):
    wanted = {str(ipaddress.ip_network(prefix)): gateway for prefix, gateway in wanted.items()}
    found = dict(map(described, vdr.routes(name)))
    for prefix, gateway in found.items():
        if wanted.get(prefix) != gateway:
            change(f"delete {name} {prefix}", vdr.routes.delete, name, prefix, gateway=gateway)
    for prefix, gateway in wanted.items():
        if found.get(prefix) != gateway:
            change(f"set {name} {prefix}", vdr.routes.set, name, prefix, gateway=gateway)


def described(route):
    """The first three words of a route are destination, netmask and gateway."""
    destination, netmask, gateway = map(address, (route.routeWord0, route.routeWord1,
                                                  route.routeWord2))
    return str(ipaddress.ip_network(f"{destination}/{netmask}")), str(gateway)


def address(word):
    return ipaddress.ip_address(word.to_bytes(4, sys.byteorder))


def change(what, command, *arguments, **options):
    for attempt in range(1, ATTEMPTS + 1):
        try:
            command(*arguments, **options)
            print(what)
            return
        except vdrzax.Error as error:
            if error.errno != errno.ENOMEM or attempt == ATTEMPTS:
                raise
            time.sleep(SECONDS_BETWEEN)


if __name__ == "__main__":
    sys.exit(main())
