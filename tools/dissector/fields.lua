-- SPDX-License-Identifier: Apache-2.0
-- What Wireshark is told before it shows anything: the fields, and what there is to complain about. The names come from
-- `protocol`, the generated tables in front of this.

local port_mgr = Proto("port_mgr", "Port manager")

-- ------------------------------------------------------------------------------------------------------- the record

local record_size = 64
local record_version = 1
local little_endian_host = 1

local kinds = {[1] = "message request", [2] = "message answer", [3] = "CMI request", [4] = "CMI answer"}
local cmi_request = 3

local function is_request(kind) return kind % 2 == 1 end

-- The header in front of every payload: name, offset and width of its fields.
local header_fields = {
  {name = "version", at = 0, width = 1, kind = "number"},
  {name = "kind", at = 1, width = 1, kind = "number", texts = "record_kind"},
  {name = "flags", at = 2, width = 1, kind = "number"},
  {name = "header_size", at = 3, width = 1, kind = "number"},
  {name = "node", at = 4, width = 4, kind = "number", texts = "node"},
  {name = "sap", at = 8, width = 4, kind = "number", texts = "sap"},
  {name = "opcode", at = 12, width = 4, kind = "number", texts = "opcode"},
  {name = "token", at = 16, width = 4, kind = "number"},
  {name = "message_id", at = 20, width = 4, kind = "number"},
  {name = "request_kind", at = 24, width = 4, kind = "number"},
  {name = "error", at = 24, width = 4, kind = "number", texts = "status"},
  {name = "payload_size", at = 28, width = 4, kind = "number"},
  {name = "payload_offset", at = 32, width = 4, kind = "number"},
  {name = "connection", at = 36, width = 4, kind = "number"},
  {name = "process", at = 40, width = 4, kind = "number"},
  {name = "process_name", at = 44, width = 20, kind = "text"},
}

protocol.texts.record_kind = kinds
protocol.texts.opcode = {}
for opcode, message in pairs(protocol.messages) do protocol.texts.opcode[opcode] = message.name end

-- Other speeds are whole Gbit/s.
setmetatable(protocol.texts.speed, {__index = function(_, speed)
  return ("%d Gbps"):format(math.floor(speed / 1000))
end})

-- ------------------------------------------------------------------------------------- the fields that Wireshark knows

local shown_fields = {}

local function number_field(abbreviation, title, field)
  local base_of = field.texts == "status" and base.HEX or base.DEC
  if field.texts == "node" or field.name == "token" then base_of = base.HEX end
  local make = ({[1] = ProtoField.uint8, [2] = ProtoField.uint16, [4] = ProtoField.uint32, [8] = ProtoField.uint64})
  return make[field.width](abbreviation, title, base_of)
end

local makers = {
  number = number_field,
  host_number = number_field,
  signed_number = function(abbreviation, title) return ProtoField.int32(abbreviation, title) end,
  if_index = function(abbreviation, title) return ProtoField.uint32(abbreviation, title, base.HEX) end,
  fc_address = function(abbreviation, title) return ProtoField.uint32(abbreviation, title, base.HEX) end,
  ipv4 = function(abbreviation, title) return ProtoField.ipv4(abbreviation, title) end,
  text = function(abbreviation, title) return ProtoField.string(abbreviation, title) end,
  bytes = function(abbreviation, title) return ProtoField.bytes(abbreviation, title) end,
  bits = function(abbreviation, title) return ProtoField.bytes(abbreviation, title) end,
}

-- The abbreviation says where a field belongs to and what the record of the public headers calls it.
local function abbreviation_of(record, field)
  return "port_mgr." .. (record and record .. "." or "") .. field.name
end

local function declare(record, fields)
  for _, field in ipairs(fields) do
    local abbreviation = abbreviation_of(record, field)
    if not shown_fields[abbreviation] then
      local title = field.name:gsub("[._]", " ")
      shown_fields[abbreviation] = makers[field.kind](abbreviation, title, field)
    end
    field.shown = shown_fields[abbreviation]
  end
end

declare(nil, header_fields)
for name, record in pairs(protocol.records) do declare(name, record.fields) end
for _, vocabulary in pairs(protocol.elements) do
  for _, element in pairs(vocabulary) do declare(element.record, element.fields) end
end
for _, attribute in pairs(protocol.attributes) do declare("config", {attribute.value}) end

for name in pairs(protocol.records) do
  local abbreviation = "port_mgr." .. name
  shown_fields[abbreviation] = ProtoField.none(abbreviation, name)
end

local own_fields = {
  record = ProtoField.none("port_mgr.record", "record"),
  message = ProtoField.none("port_mgr.message", "message"),
  elements = ProtoField.none("port_mgr.elements", "elements"),
  element = ProtoField.none("port_mgr.element", "element"),
  config = ProtoField.none("port_mgr.config", "attribute"),
  interface = ProtoField.string("port_mgr.interface", "interface"),
  payload = ProtoField.bytes("port_mgr.payload", "payload"),
  rest = ProtoField.bytes("port_mgr.rest", "not understood"),
  element_type = ProtoField.uint16("port_mgr.element.type", "type"),
  element_length = ProtoField.uint16("port_mgr.element.length", "length"),
  element_value = ProtoField.bytes("port_mgr.element.value", "value"),
  attribute = ProtoField.uint8("port_mgr.config.attribute", "attribute"),
  attribute_length = ProtoField.uint8("port_mgr.config.length", "length"),
  attribute_value = ProtoField.bytes("port_mgr.config.value", "value"),
  response_in = ProtoField.framenum("port_mgr.response_in", "Response in", base.NONE, frametype.RESPONSE),
  response_to = ProtoField.framenum("port_mgr.response_to", "Request in", base.NONE, frametype.REQUEST),
  time = ProtoField.relative_time("port_mgr.time", "Response time"),
  whole_in = ProtoField.framenum("port_mgr.whole_in", "Whole message in", base.NONE),
}

for name, field in pairs(own_fields) do shown_fields["own " .. name] = field end
port_mgr.fields = shown_fields

local experts = {
  malformed = ProtoExpert.new("port_mgr.malformed", "The payload ends too early, or says what cannot be",
                              expert.group.MALFORMED, expert.severity.ERROR),
  refused = ProtoExpert.new("port_mgr.refused", "The request was refused",
                            expert.group.RESPONSE_CODE, expert.severity.NOTE),
  unknown = ProtoExpert.new("port_mgr.unknown", "Nothing is known about the content",
                            expert.group.UNDECODED, expert.severity.NOTE),
  missing_piece = ProtoExpert.new("port_mgr.missing_piece", "The pieces before this one were not captured",
                                  expert.group.SEQUENCE, expert.severity.WARN),
  cut = ProtoExpert.new("port_mgr.cut", "Not all of the message was captured",
                        expert.group.UNDECODED, expert.severity.WARN),
  many = ProtoExpert.new("port_mgr.many", "More records than are shown",
                         expert.group.UNDECODED, expert.severity.NOTE),
}
port_mgr.experts = experts

