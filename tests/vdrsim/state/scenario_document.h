#pragma once

// A scenario that has two or three of almost everything, as it is printed.
inline constexpr const char* kScenarioDocument = R"({
  "format_version": 1,
  "instances": {
    "edge-1": {
      "second": 1,
      "flag": 1,
      "lifs": {
        "lif-1": {
          "auxName": "uplink-1",
          "a5": 1,
          "extra": "02:01:00:00:00:01",
          "isEnabled": true,
          "mtu": 1500,
          "addresses": [
            {"address": "10.0.1.1", "mask": "255.255.255.0"},
            {"address": "10.0.1.2", "mask": "255.255.255.0"}
          ],
          "relayServers": [
            {"address": "11.0.0.1"},
            {"address": "11.0.0.2"}
          ],
          "arps": [
            {"address": "20.0.0.1", "mac": "02:02:00:01:00:01"},
            {"address": "20.0.0.2", "mac": "02:02:00:01:00:02"}
          ],
          "proxyArps": [
            {"address": "30.0.0.1"},
            {"address": "30.0.0.2"}
          ],
          "ipv6Neighbours": [
            {"address": "2001:db8:1::1", "mac": "02:02:00:01:00:01"},
            {"address": "2001:db8:1::2", "mac": "02:02:00:01:00:02"}
          ],
          "ipv6Proxies": [
            {"address": "2001:db8:2::1"},
            {"address": "2001:db8:2::2"}
          ],
          "policies": [
            {"type": 4, "arg1": "40.0.1.0", "arg2": "255.255.255.0", "arg3": "0.0.0.0", "flags": 0, "ifName": "lif-1"},
            {"type": 4, "arg1": "40.0.2.0", "arg2": "255.255.255.0", "arg3": "0.0.0.0", "flags": 0, "ifName": "lif-2"},
            {"type": 4, "arg1": "40.0.3.0", "arg2": "255.255.255.0", "arg3": "0.0.0.0", "flags": 0, "ifName": "lif-1"}
          ],
          "policyTableRef": {
            "entries": [
              {"qword0": 1, "qword8": 0, "qword16": 0},
              {"qword0": 2, "qword8": 0, "qword16": 0}
            ]
          }
        },
        "lif-2": {
          "auxName": "uplink-2",
          "a5": 2,
          "extra": "02:01:00:00:00:02",
          "isEnabled": true,
          "mtu": 1500,
          "addresses": [
            {"address": "10.0.2.1", "mask": "255.255.255.0"},
            {"address": "10.0.2.2", "mask": "255.255.255.0"}
          ],
          "relayServers": [
            {"address": "11.0.0.1"},
            {"address": "11.0.0.2"}
          ],
          "arps": [
            {"address": "20.0.0.3", "mac": "02:02:00:02:00:01"},
            {"address": "20.0.0.4", "mac": "02:02:00:02:00:02"}
          ],
          "proxyArps": [
            {"address": "30.0.0.3"},
            {"address": "30.0.0.4"}
          ],
          "ipv6Neighbours": [
            {"address": "2001:db8:1::3", "mac": "02:02:00:02:00:01"},
            {"address": "2001:db8:1::4", "mac": "02:02:00:02:00:02"}
          ],
          "ipv6Proxies": [
            {"address": "2001:db8:2::3"},
            {"address": "2001:db8:2::4"}
          ],
          "policies": [
            {"type": 4, "arg1": "40.0.1.0", "arg2": "255.255.255.0", "arg3": "0.0.0.0", "flags": 0, "ifName": "lif-1"},
            {"type": 4, "arg1": "40.0.2.0", "arg2": "255.255.255.0", "arg3": "0.0.0.0", "flags": 0, "ifName": "lif-2"},
            {"type": 4, "arg1": "40.0.3.0", "arg2": "255.255.255.0", "arg3": "0.0.0.0", "flags": 0, "ifName": "lif-1"}
          ],
          "policyTableRef": {
            "entries": [
              {"qword0": 1, "qword8": 0, "qword16": 0},
              {"qword0": 2, "qword8": 0, "qword16": 0}
            ]
          }
        }
      },
      "bridgeLifs": {
        "bridge-lif-1-1": {
          "a5": 1,
          "endpoints": {
            "endpoint-1": {
              "value1": 1,
              "value2": 1,
              "tag": 1
            },
            "endpoint-2": {
              "value1": 2,
              "value2": 2,
              "tag": 2
            },
            "endpoint-3": {
              "value1": 1,
              "value2": 3,
              "tag": 3
            }
          }
        },
        "bridge-lif-1-2": {
          "a5": 2,
          "endpoints": {
            "endpoint-1": {
              "value1": 1,
              "value2": 1,
              "tag": 1
            },
            "endpoint-2": {
              "value1": 2,
              "value2": 2,
              "tag": 2
            },
            "endpoint-3": {
              "value1": 1,
              "value2": 3,
              "tag": 3
            }
          }
        }
      },
      "routes": [
        {"destination": "100.0.1.0", "mask": "255.255.255.0", "third": "10.0.0.1", "interface": "lif-1"},
        {"destination": "100.0.2.0", "mask": "255.255.255.0", "third": "10.0.0.2", "interface": "lif-2"},
        {"destination": "100.0.3.0", "mask": "255.255.255.0", "third": "10.0.0.3", "interface": "lif-1"}
      ],
      "ipv6Routes": [
        {"destination": "2001:db8:1::", "prefixLength": 48, "gateway": "2001:db8::1", "interface": "lif-1"},
        {"destination": "2001:db8:2::", "prefixLength": 48, "gateway": "2001:db8::2", "interface": "lif-2"}
      ],
      "bridging": {
        "bridges": [
          {
            "value": 1,
            "isEnabled": true
          },
          {
            "value": 2,
            "isEnabled": true
          }
        ],
        "forwarding": [
          {
            "segment": 1,
            "selector": 0,
            "entries": [
              {"mac": "02:03:00:00:00:01", "value": 1},
              {"mac": "02:03:00:00:00:02", "value": 2}
            ]
          },
          {
            "segment": 2,
            "selector": 0,
            "entries": [
              {"mac": "02:03:00:00:00:01", "value": 1},
              {"mac": "02:03:00:00:00:02", "value": 2}
            ]
          }
        ]
      },
      "multicast": {
        "groups": [
          {
            "group": "239.0.0.1",
            "localReceivers": {
              "receiver-1": {},
              "receiver-2": {}
            },
            "remoteReceivers": [
              {"b": 1, "c": "02:04:00:00:00:01", "d": 1},
              {"b": 2, "c": "02:04:00:00:00:02", "d": 2}
            ]
          }
        ]
      },
      "policies": [
        {"type": 1, "arg1": "41.0.1.0", "arg2": "255.255.255.0", "arg3": "0.0.0.0", "flags": 0, "ifName": "lif-1"},
        {"type": 1, "arg1": "41.0.2.0", "arg2": "255.255.255.0", "arg3": "0.0.0.0", "flags": 0, "ifName": "lif-2"}
      ]
    }
  },
  "connections": {
    "connection-1": {"seventh": 1},
    "connection-2": {"seventh": 2}
  },
  "policies": [
    {
      "key": 1,
      "policies": [
        {"arg1": 1, "arg2": 0, "arg3": 1},
        {"arg1": 2, "arg2": 0, "arg3": 2}
      ]
    },
    {
      "key": 2,
      "policies": [
        {"arg1": 1, "arg2": 0, "arg3": 1},
        {"arg1": 2, "arg2": 0, "arg3": 2}
      ]
    }
  ],
  "policyTables": [
    {"key": 1, "name": "table-1"},
    {"key": 2, "name": "table-2"}
  ],
  "e2iEntries": [
    {"key": 1, "mac": "02:08:00:00:00:01"},
    {"key": 2, "mac": "02:08:00:00:00:02"}
  ],
  "physicalMacs": [
    {"mac": "02:09:00:00:00:01", "value": 1},
    {"mac": "02:09:00:00:00:02", "value": 2}
  ],
  "softRss": {
    "rss-1": {
      "qword0": 1,
      "entryCount": 128
    },
    "rss-2": {
      "qword0": 2,
      "entryCount": 128
    }
  },
  "publicAddresses": [
    {
      "address": "50.0.0.1",
      "c": "02:05:00:00:00:01",
      "items": ["60.0.0.1", "60.0.0.2"]
    },
    {
      "address": "50.0.0.2",
      "c": "02:05:00:00:00:02",
      "items": ["60.0.0.1", "60.0.0.2"]
    }
  ],
  "bridgeClusters": {
    "cluster-1": {
      "nodes": {
        "node-1": "02:06:00:00:01:01",
        "node-2": "02:06:00:00:01:02"
      },
      "profile": 1
    },
    "cluster-2": {
      "nodes": {
        "node-1": "02:06:00:00:02:01",
        "node-2": "02:06:00:00:02:02"
      },
      "profile": 1
    }
  },
  "bfdPortConnections": {
    "port-1": {"mac": "02:07:00:00:00:01"},
    "port-2": {"mac": "02:07:00:00:00:02"}
  },
  "transportNode": {"name1": "transport-node"}
}
)";
