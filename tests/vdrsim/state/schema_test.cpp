#include <gtest/gtest.h>

#include <string>

#include "state/state_schema.h"

namespace {

// Without line feeds and what follows them: how it is broken into lines doesn't matter.
std::string Joined(const std::string& text) {
  std::string joined;
  bool isIndentation = false;
  for (const char character : text) {
    isIndentation = character == '\n' || (isIndentation && character == ' ');
    if (!isIndentation) joined += character;
  }
  return joined;
}

TEST(StateSchema, IsAWholeDocument) {
  const std::string schema = vdrsim::StateSchema();
  EXPECT_TRUE(schema.starts_with("{\n  \"$schema\": \"")) << "is broken into lines";
  EXPECT_TRUE(schema.ends_with("\n}\n"));
  EXPECT_EQ(Joined(schema), Joined(R"({"$schema": "https://json-schema.org/draft/2020-12/schema",
  "title": "State of the simulated datapath","type": "object","properties": {"format_version": {
  "const": 1},"instances": {"type": "object","propertyNames": {"type": "string","minLength": 1},
  "additionalProperties": {"$ref": "#/$defs/Instance"},"maxProperties": 1001},"logLevel": {
  "type": "integer","minimum": 0,"maximum": 4294967295},"extendedLogLevel": {"type": "integer",
  "minimum": 0,"maximum": 4294967295},"statsLevel": {"type": "integer","minimum": 0,
  "maximum": 4294967295},"txDispatchQueueSize": {"type": "integer","minimum": 0,
  "maximum": 4294967295},"preUnloadAnnounced": {"type": "boolean"},"cpActivation": {
  "type": "integer","minimum": 0,"maximum": 4294967295},"connections": {"type": "object",
  "propertyNames": {"type": "string","minLength": 1},"additionalProperties": {
  "$ref": "#/$defs/Connection"},"maxProperties": 327},"policies": {"type": "array","items": {
  "$ref": "#/$defs/PolicyList"}},"policyTables": {"type": "array","items": {
  "$ref": "#/$defs/PolicyTable"},"maxItems": 1000},"e2iEntries": {"type": "array","items": {
  "$ref": "#/$defs/E2i"},"maxItems": 8192},"physicalMacs": {"type": "array","items": {
  "$ref": "#/$defs/PhysicalMac"},"maxItems": 8192},"fullSyncSaves": {
  "$ref": "#/$defs/FullSyncSaves"},"softRss": {"type": "object","propertyNames": {"type": "string",
  "minLength": 1},"additionalProperties": {"$ref": "#/$defs/SoftRss"}},"publicAddresses": {
  "type": "array","items": {"$ref": "#/$defs/PublicAddress"}},"bridgeClusters": {"type": "object",
  "propertyNames": {"type": "string","minLength": 1},"additionalProperties": {
  "$ref": "#/$defs/BridgeCluster"},"maxProperties": 10},"bfdPortConnections": {"type": "object",
  "propertyNames": {"type": "string","minLength": 1},"additionalProperties": {
  "$ref": "#/$defs/BfdPortConnection"},"maxProperties": 1524},"transportNode": {
  "$ref": "#/$defs/TransportNode"},"counters": {"$ref": "#/$defs/Counts"}},"required": [
  "format_version"],"additionalProperties": false,
"$defs": {
  "Instance": {"type": "object","properties": {"second": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"fourth": {"type": "integer","minimum": 0,"maximum": 4294967295},
    "flag": {"type": "integer","minimum": 0,"maximum": 255},"text": {"type": "string"},"tunables": {
    "type": "string"},"tunablesValue": {"type": "integer","minimum": 0,"maximum": 4294967295},
    "cpAddress": {"type": "string","format": "ipv4"},"cpSyncState": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"mcastRouting": {"$ref": "#/$defs/McastRouting"},"lifs": {
    "type": "object","propertyNames": {"type": "string","minLength": 1},"additionalProperties": {
    "$ref": "#/$defs/Lif"},"maxProperties": 10000},"bridgeLifs": {"type": "object",
    "propertyNames": {"type": "string","minLength": 1},"additionalProperties": {
    "$ref": "#/$defs/Lif"},"maxProperties": 10000},"routes": {"type": "array","items": {
    "$ref": "#/$defs/Route"},"maxItems": 20000},"ipv6Routes": {"type": "array","items": {
    "$ref": "#/$defs/Ipv6Route"},"maxItems": 29999},"bridging": {"$ref": "#/$defs/Bridging"},
    "multicast": {"$ref": "#/$defs/Multicast"},"policies": {"type": "array","items": {
    "$ref": "#/$defs/LifPolicy"},"maxItems": 20000},"counters": {"$ref": "#/$defs/Counts"}},
    "additionalProperties": false},
  "McastRouting": {"type": "object","properties": {"name2": {"type": "string"},"value1": {
    "type": "integer","minimum": 0,"maximum": 4294967295},"value2": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"value3": {"type": "integer","minimum": 0,"maximum": 65535},"flag": {
    "type": "integer","minimum": 0,"maximum": 255}},"additionalProperties": false},
  "Lif": {"type": "object","properties": {"auxName": {"type": "string"},"a3": {"type": "integer",
    "minimum": 0,"maximum": 4294967295},"a4": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"a5": {"type": "integer","minimum": 0,"maximum": 4294967295},"a6": {
    "type": "integer","minimum": 0,"maximum": 4294967295},"a7": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"extra": {"type": "string","pattern": "^[0-9A-Fa-f]{2}([:-][0-9A-Fa-f]{
    2}){5}$"},"flags": {"type": "integer","minimum": 0,"maximum": 4294967295},"mode": {
    "type": "integer","minimum": 0,"maximum": 255},"isEnabled": {"type": "boolean"},
    "isUnderVxlanControl": {"type": "boolean"},"routesMulticast": {"type": "boolean"},"diIp": {
    "type": "string","format": "ipv4"},"vxlanMulticastIp": {"type": "string","format": "ipv4"},
    "mtu": {"type": "integer","minimum": 0,"maximum": 4294967295},"addresses": {"type": "array",
    "items": {"$ref": "#/$defs/LifAddress"},"maxItems": 10},"relayServers": {"type": "array",
    "items": {"$ref": "#/$defs/RelayServer"},"maxItems": 8},"endpoints": {"type": "object",
    "propertyNames": {"type": "string","minLength": 1},"additionalProperties": {
    "$ref": "#/$defs/BridgeEndpoint"},"maxProperties": 28672},"arps": {"type": "array","items": {
    "$ref": "#/$defs/Ipv4Neighbour"},"maxItems": 8192},"proxyArps": {"type": "array","items": {
    "$ref": "#/$defs/Ipv4Proxy"},"maxItems": 8192},"ipv6Neighbours": {"type": "array","items": {
    "$ref": "#/$defs/Ipv6Neighbour"},"maxItems": 8192},"ipv6Proxies": {"type": "array","items": {
    "$ref": "#/$defs/Ipv6Proxy"},"maxItems": 8192},"policies": {"type": "array","items": {
    "$ref": "#/$defs/LifPolicy"},"maxItems": 20000},"policyTableRef": {
    "$ref": "#/$defs/PolicyTableRef"},"counters": {"$ref": "#/$defs/Counts"},"cachedCounts": {
    "$ref": "#/$defs/Counts"}},"additionalProperties": false},
  "LifAddress": {"type": "object","properties": {"address": {"anyOf": [{"type": "string",
    "format": "ipv4"},{"type": "string","format": "ipv6"}]},"mask": {"type": "string",
    "format": "ipv4"},"prefixLength": {"type": "integer","minimum": 0,"maximum": 255}},"required": [
    "address"],"additionalProperties": false},
  "RelayServer": {"type": "object","properties": {"address": {"type": "string","pattern": "^([
    0-9A-Fa-f:.]+)$"}},"required": ["address"],"additionalProperties": false},
  "BridgeEndpoint": {"type": "object","properties": {"secondName": {"type": "string"},
    "fourthName": {"type": "string"},"fifthName": {"type": "string"},"value1": {"type": "integer",
    "minimum": 0,"maximum": 4294967295},"value2": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"tag": {"type": "integer","minimum": 0,"maximum": 65535},"flag1": {
    "type": "integer","minimum": 0,"maximum": 255},"flag2": {"type": "integer","minimum": 0,
    "maximum": 255},"counters": {"$ref": "#/$defs/Counts"}},"additionalProperties": false},
  "Counts": {"type": "object","properties": {"sets": {"type": "integer","minimum": 0,
    "maximum": 18446744073709551615},"deletes": {"type": "integer","minimum": 0,
    "maximum": 18446744073709551615},"lookups": {"type": "integer","minimum": 0,
    "maximum": 18446744073709551615},"failures": {"type": "integer","minimum": 0,
    "maximum": 18446744073709551615}},"additionalProperties": false},
  "Ipv4Neighbour": {"type": "object","properties": {"address": {"type": "string","format": "ipv4"},
    "mac": {"type": "string","pattern": "^[0-9A-Fa-f]{2}([:-][0-9A-Fa-f]{2}){5}$"}},"required": [
    "address"],"additionalProperties": false},
  "Ipv4Proxy": {"type": "object","properties": {"address": {"type": "string","format": "ipv4"}},
    "required": ["address"],"additionalProperties": false},
  "Ipv6Neighbour": {"type": "object","properties": {"address": {"type": "string","format": "ipv6"},
    "mac": {"type": "string","pattern": "^[0-9A-Fa-f]{2}([:-][0-9A-Fa-f]{2}){5}$"}},"required": [
    "address"],"additionalProperties": false},
  "Ipv6Proxy": {"type": "object","properties": {"address": {"type": "string","format": "ipv6"}},
    "required": ["address"],"additionalProperties": false},
  "LifPolicy": {"type": "object","properties": {"type": {"type": "integer","minimum": -2147483648,
    "maximum": 2147483647},"arg1": {"type": "string","format": "ipv4"},"arg2": {"type": "string",
    "format": "ipv4"},"arg3": {"type": "string","format": "ipv4"},"flags": {"type": "integer",
    "minimum": 0,"maximum": 4294967295},"ifName": {"type": "string"}},
    "additionalProperties": false},
  "PolicyTableRef": {"type": "object","properties": {"entries": {"type": "array","items": {
    "$ref": "#/$defs/RefEntry"},"maxItems": 20}},"additionalProperties": false},
  "RefEntry": {"type": "object","properties": {"qword0": {"type": "integer","minimum": 0,
    "maximum": 18446744073709551615},"qword8": {"type": "integer","minimum": 0,
    "maximum": 18446744073709551615},"qword16": {"type": "integer","minimum": 0,
    "maximum": 18446744073709551615}},"additionalProperties": false},
  "Route": {"type": "object","properties": {"destination": {"type": "string","format": "ipv4"},
    "mask": {"type": "string","format": "ipv4"},"third": {"type": "string","format": "ipv4"},
    "interface": {"type": "string"},"flags": {"type": "integer","minimum": 0,
    "maximum": 4294967295}},"additionalProperties": false},
  "Ipv6Route": {"type": "object","properties": {"destination": {"type": "string","format": "ipv6"},
    "prefixLength": {"type": "integer","minimum": 0,"maximum": 255},"gateway": {"type": "string",
    "format": "ipv6"},"interface": {"type": "string"}},"additionalProperties": false},
  "Bridging": {"type": "object","properties": {"bridges": {"type": "array","items": {
    "$ref": "#/$defs/Bridge"},"maxItems": 4096},"forwarding": {"type": "array","items": {
    "$ref": "#/$defs/FdbTable"}},"replicationMode": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"haAdminState": {"type": "integer","minimum": 0,"maximum": 4294967295}},
    "additionalProperties": false},
  "Bridge": {"type": "object","properties": {"value": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"isEnabled": {"type": "boolean"},"counters": {"$ref": "#/$defs/Counts"}},
    "required": ["value"],"additionalProperties": false},
  "FdbTable": {"type": "object","properties": {"segment": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"selector": {"type": "integer","minimum": 0,"maximum": 4294967295},
    "entries": {"type": "array","items": {"$ref": "#/$defs/FdbEntry"},"maxItems": 10240}},
    "additionalProperties": false},
  "FdbEntry": {"type": "object","properties": {"mac": {"type": "string","pattern": "^[0-9A-Fa-f]{
    2}([:-][0-9A-Fa-f]{2}){5}$"},"value": {"type": "integer","minimum": 0,"maximum": 4294967295},
    "flag": {"type": "integer","minimum": 0,"maximum": 255}},"required": ["mac"],
    "additionalProperties": false},
  "Multicast": {"type": "object","properties": {"groups": {"type": "array","items": {
    "$ref": "#/$defs/McastGroup"},"maxItems": 4096},"router": {"type": "string","format": "ipv4"}},
    "additionalProperties": false},
  "McastGroup": {"type": "object","properties": {"group": {"type": "string","format": "ipv4"},
    "localReceivers": {"type": "object","propertyNames": {"type": "string"},
    "additionalProperties": {"$ref": "#/$defs/LocalReceiver"},"maxProperties": 512},
    "remoteReceivers": {"type": "array","items": {"$ref": "#/$defs/RemoteReceiver"},
    "maxItems": 2048}},"required": ["group"],"additionalProperties": false},
  "LocalReceiver": {"type": "object","properties": {},"additionalProperties": false},
  "RemoteReceiver": {"type": "object","properties": {"b": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"c": {"type": "string","pattern": "^[0-9A-Fa-f]{2}([:-][0-9A-Fa-f]{2}){
    5}$"},"d": {"type": "integer","minimum": 0,"maximum": 4294967295},"e": {"type": "integer",
    "minimum": 0,"maximum": 4294967295}},"required": ["b"],"additionalProperties": false},
  "Connection": {"type": "object","properties": {"second": {"type": "string"},"fourth": {
    "type": "string"},"fifth": {"type": "string"},"sixth": {"type": "string"},"seventh": {
    "type": "integer","minimum": 0,"maximum": 4294967295}},"additionalProperties": false},
  "PolicyList": {"type": "object","properties": {"key": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"policies": {"type": "array","items": {"$ref": "#/$defs/Policy"},
    "maxItems": 1000}},"required": ["key"],"additionalProperties": false},
  "Policy": {"type": "object","properties": {"arg1": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"arg2": {"type": "integer","minimum": 0,"maximum": 4294967295},"arg3": {
    "type": "integer","minimum": 0,"maximum": 4294967295}},"additionalProperties": false},
  "PolicyTable": {"type": "object","properties": {"key": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"name": {"type": "string"}},"required": ["key"],
    "additionalProperties": false},
  "E2i": {"type": "object","properties": {"key": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"value2": {"type": "integer","minimum": 0,"maximum": 4294967295},"mac": {
    "type": "string","pattern": "^[0-9A-Fa-f]{2}([:-][0-9A-Fa-f]{2}){5}$"},"value4": {
    "type": "integer","minimum": 0,"maximum": 4294967295},"value5": {"type": "integer","minimum": 0,
    "maximum": 4294967295}},"required": ["key"],"additionalProperties": false},
  "PhysicalMac": {"type": "object","properties": {"mac": {"type": "string","pattern": "^[0-9A-Fa-f]{
    2}([:-][0-9A-Fa-f]{2}){5}$"},"value": {"type": "integer","minimum": 0,"maximum": 4294967295}},
    "required": ["mac"],"additionalProperties": false},
  "FullSyncSaves": {"type": "object","properties": {"count": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"lastFlag": {"type": "integer","minimum": 0,"maximum": 255}},
    "additionalProperties": false},
  "SoftRss": {"type": "object","properties": {"qword0": {"type": "integer","minimum": 0,
    "maximum": 18446744073709551615},"entryCount": {"type": "integer","minimum": 0,"maximum": 128},
    "indirection": {"type": "string","pattern": "^[0-9A-Fa-f]{256}$"},"counters": {
    "$ref": "#/$defs/Counts"}},"additionalProperties": false},
  "PublicAddress": {"type": "object","properties": {"address": {"type": "string","format": "ipv4"},
    "c": {"type": "string","pattern": "^[0-9A-Fa-f]{2}([:-][0-9A-Fa-f]{2}){5}$"},"d": {
    "type": "integer","minimum": 0,"maximum": 4294967295},"items": {"type": "array","items": {
    "type": "string","format": "ipv4"},"maxItems": 256}},"required": ["address"],
    "additionalProperties": false},
  "BridgeCluster": {"type": "object","properties": {"nodes": {"type": "object","propertyNames": {
    "type": "string","minLength": 1},"additionalProperties": {"type": "string","pattern": "^[
    0-9A-Fa-f]{2}([:-][0-9A-Fa-f]{2}){5}$"},"maxProperties": 100},"profile": {"type": "integer",
    "minimum": 0,"maximum": 255},"profileValue1": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"profileValue2": {"type": "integer","minimum": 0,"maximum": 4294967295},
    "debugLevel": {"type": "integer","minimum": 0,"maximum": 255}},"additionalProperties": false},
  "BfdPortConnection": {"type": "object","properties": {"name2": {"type": "string"},"mac": {
    "type": "string","pattern": "^[0-9A-Fa-f]{2}([:-][0-9A-Fa-f]{2}){5}$"}},
    "additionalProperties": false},
  "TransportNode": {"type": "object","properties": {"name1": {"type": "string"},"name2": {
    "type": "string"},"name3": {"type": "string"},"value": {"type": "integer","minimum": 0,
    "maximum": 4294967295},"bytes": {"type": "string","pattern": "^[0-9A-Fa-f]{128}$"}},
    "additionalProperties": false}}})"));
}

}  // namespace
