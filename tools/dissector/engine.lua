-- The engine: walks a message along the tables of `protocol`, and never beyond the end of what was captured.

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

-- ----------------------------------------------------------------------------------------------------------- values

local function bits_of(number, field) return math.floor(number / 2 ^ field.shift) % 2 ^ field.bits end

-- The name of an interface, as the development platform writes it.
local function interface_name(index)
  local type = math.floor(index / 2 ^ 24)
  local kind = protocol.interface_kinds[type]
  if not kind then return ("if%d-0x%x"):format(type, index % 2 ^ 24) end
  local explained = bits_of(index, kind.number) * 2 ^ kind.number.shift
  local name = kind.name ~= "" and kind.name or ("if%d-"):format(type)
  local unit = bits_of(index, kind.unit)
  local sub_intf = bits_of(index, kind.sub_intf)
  explained = explained + unit * 2 ^ kind.unit.shift + sub_intf * 2 ^ kind.sub_intf.shift
  if explained ~= index % 2 ^ 24 then return ("if%d-0x%x"):format(type, index % 2 ^ 24) end
  if kind.base == 1 or unit ~= 0 then name = name .. ("%d/"):format(unit + kind.base) end
  name = name .. ("%d"):format(bits_of(index, kind.number) + kind.base)
  return sub_intf ~= 0 and name .. (".%d"):format(sub_intf) or name
end

-- The numbers of a set: bit n is bit 7 - n % 8 of byte n / 8.
local function numbers_in(range)
  local bytes = range:bytes()
  local runs = {}
  local first
  for number = 0, 8 * bytes:len() do
    local byte = number < 8 * bytes:len() and bytes:get_index(math.floor(number / 8)) or 0
    local is_in = math.floor(byte / 2 ^ (7 - number % 8)) % 2 == 1
    if is_in and not first then first = number end
    if first and not is_in then
      runs[#runs + 1] = first == number - 1 and tostring(first) or ("%d-%d"):format(first, number - 1)
      first = nil
    end
  end
  return #runs > 0 and table.concat(runs, ", ") or "none"
end

-- Characters up to their NUL, without the blanks that pad them.
local function text_in(range)
  return (range:string():gsub("%z.*", ""):gsub("%s+$", ""))
end

-- Adds one element of a field. Returns its value, when it is a number of at most 32 bits.
local function add_number(tree, field, range, is_little)
  if field.width == 8 then
    tree:add(field.shown, range)
    return nil
  end
  local value = is_little and range:le_uint() or range:uint()
  local item = tree:add(field.shown, range, value)
  local text = field.texts and protocol.texts[field.texts][value]
  if text then item:append_text((" (%s)"):format(text)) end
  return value
end

local add_by_kind = {
  number = function(tree, field, range) return add_number(tree, field, range, false) end,
  host_number = function(tree, field, range, context) return add_number(tree, field, range, context.is_little) end,
  if_index = function(tree, field, range)
    local value = range:uint()
    local item = tree:add(field.shown, range, value)
    if value == 0 then
      item:append_text(" (none)")
    else
      local name = interface_name(value)
      item:append_text((" (%s)"):format(name))
      item:add(own_fields.interface, range, name):set_generated()
    end
    return value
  end,
  signed_number = function(tree, field, range) tree:add(field.shown, range) end,
  fc_address = function(tree, field, range) tree:add(field.shown, range) end,
  ipv4 = function(tree, field, range) tree:add(field.shown, range) end,
  bytes = function(tree, field, range) tree:add(field.shown, range) end,
  text = function(tree, field, range) tree:add(field.shown, range, text_in(range)) end,
  bits = function(tree, field, range) tree:add(field.shown, range):append_text(": " .. numbers_in(range)) end,
}

-- Adds the elements of a field that lie in `range`, and keeps the first one's value in `values`. Returns false when the
-- range ends before the field.
local function add_field(tree, field, range, values, context)
  for index = 0, (field.count or 1) - 1 do
    local at = field.at + index * field.width
    if at + field.width > range:len() then return false end
    local value = add_by_kind[field.kind](tree, field, range(at, field.width), context)
    if index == 0 then values[field.name] = value end
  end
  return true
end

-- --------------------------------------------------------------------------------------------------------- payloads

-- What is dissected: the bytes, how far they are, and what the fields so far said.
local function new_context(tvb, is_little)
  return {tvb = tvb, at = 0, values = {}, is_little = is_little, is_whole = true}
end

local function left(context) return context.tvb:len() - context.at end

-- Takes the next bytes, or as many as there are.
local function take(context, size)
  local taken = math.min(size, left(context))
  local range = taken > 0 and context.tvb(context.at, taken) or nil
  context.at = context.at + taken
  return range
end

local function complain(context, tree, why)
  tree:add_proto_expert_info(experts.malformed, why)
  context.is_whole = false
end

-- A record as far as it goes. Returns the fields' values.
local function add_record(context, tree, name)
  local record = protocol.records[name]
  local values = {}
  local range = take(context, record.size)
  if not range then
    complain(context, tree, ("No %s where one has to be"):format(name))
    return values
  end
  for _, field in ipairs(record.fields) do add_field(tree, field, range, values, context) end
  if range:len() < record.size then
    complain(context, tree, ("%d of the %d bytes of %s"):format(range:len(), record.size, name))
  end
  return values
end

local function subject_of(values)
  local index = values.if_index or values.main or values.first
  return index and interface_name(index) or nil
end

-- Trees with more items than that help nobody, and Wireshark refuses them.
local most_records = 5000
local most_elements = 40000

local function add_rest(context, tree)
  local range = take(context, left(context))
  if range then return tree:add(own_fields.rest, range) end
end

local function add_records(context, tree, name, count)
  for index = 1, count do
    if not context.is_whole then return end
    if left(context) == 0 then
      return complain(context, tree, ("%d of %d records"):format(index - 1, count))
    end
    if index > most_records then
      local size = math.min(left(context), (count - index + 1) * protocol.records[name].size)
      tree:add(own_fields.rest, take(context, size)):add_proto_expert_info(experts.many)
      return
    end
    local start = context.at
    local branch = tree:add(shown_fields["port_mgr." .. name], context.tvb(start))
    local values = add_record(context, branch, name)
    branch:set_len(context.at - start)
    local subject = subject_of(values)
    if subject then branch:append_text(": " .. subject) end
    if subject and not context.subject then context.subject = subject end
  end
end

-- One element; false at what is none.
local function add_element(context, tree, vocabulary, is_aligned)
  local form = protocol.element_array
  local start = context.at
  if left(context) < form.element_header_size then return false end
  local type, length = context.tvb(start, 2):uint(), context.tvb(start + 2, 2):uint()
  local padded = is_aligned and math.ceil(length / form.alignment) * form.alignment or length
  local branch = tree:add(own_fields.element, context.tvb(start))
  branch:add(own_fields.element_type, take(context, 2))
  branch:add(own_fields.element_length, take(context, 2))
  local value = take(context, padded)
  branch:set_len(context.at - start)
  if not value then return length == 0 end
  local known = vocabulary[type]
  local values, name = {}, nil
  for _, field in ipairs(known and known.fields or {}) do
    add_field(branch, field, value, values, context)
    name = field.name
  end
  if not known then branch:add(own_fields.element_value, value) end
  branch:set_text(("element %d: %s"):format(type, name or "unknown"))
  if values.if_index then branch:append_text((", %s"):format(interface_name(values.if_index))) end
  return value:len() == padded
end

local function add_elements(context, tree, name, is_aligned)
  if left(context) == 0 or not context.is_whole then return end
  local form = protocol.element_array
  local start = context.at
  local branch = tree:add(own_fields.elements, context.tvb(start))
  local header = take(context, form.header_size)
  if header:len() < form.header_size or header(0, 4):uint() ~= form.mark then
    return complain(context, branch, "This is no array of elements")
  end
  local count, size = header(form.count_at, 4):uint(), header(form.bytes_at, 4):uint()
  branch:append_text((": %d in %d bytes"):format(count, size))
  local ending = context.at + size
  for index = 1, count do
    if index > most_elements then
      return add_rest(context, branch):add_proto_expert_info(experts.many)
    end
    if context.at >= ending or not add_element(context, branch, protocol.elements[name], is_aligned) then
      return complain(context, branch, ("%d of %d elements"):format(index - 1, count))
    end
  end
end

-- The attribute that a request sets: its number, the length of its value, and the value.
local function add_attribute(context, tree)
  if not context.is_whole then return end
  if left(context) < 2 then return complain(context, tree, "No attribute where one has to be") end
  local start = context.at
  local branch = tree:add(own_fields.config, context.tvb(start))
  local number, length = context.tvb(start, 1):uint(), context.tvb(start + 1, 1):uint()
  local known = protocol.attributes[number]
  local title = known and known.title or "unknown"
  branch:add(own_fields.attribute, take(context, 1)):append_text((" (%s)"):format(title))
  branch:append_text((" %d: %s"):format(number, title))
  branch:add(own_fields.attribute_length, take(context, 1))
  context.attribute = title
  local value = take(context, length)
  if not value then
    if length > 0 then complain(context, branch, "The attribute has no value") end
    return
  end
  if not known or not add_field(branch, known.value, value, {}, context) then
    branch:add(own_fields.attribute_value, value)
  end
  if value:len() < length then complain(context, branch, "The value ends too early") end
end

local add_piece = {
  record = function(context, tree, piece)
    for name, value in pairs(add_record(context, tree, piece.name)) do context.values[name] = value end
  end,
  records = function(context, tree, piece)
    add_records(context, tree, piece.name, context.values[piece.count] or 0)
  end,
  elements = function(context, tree, piece) add_elements(context, tree, piece.name, false) end,
  aligned_elements = function(context, tree, piece) add_elements(context, tree, piece.name, true) end,
  attribute = add_attribute,
}

-- An answer that tells a status may end behind it.
local function ends_here(context)
  return not context.is_whole or (left(context) == 0 and (context.values.status or 0) ~= 0)
end

local function add_payload(context, tree, pieces)
  for _, piece in ipairs(pieces) do
    if ends_here(context) then break end
    if not piece.only_with or context.values[piece.only_with] == piece.value then
      add_piece[piece.kind](context, tree, piece)
    end
  end
  local rest = add_rest(context, tree)
  if rest then rest:add_proto_expert_info(experts.malformed, "More than the message has to hold") end
end

-- ---------------------------------------------------------------------------------------------- messages in a capture

local open_requests = {}  -- by conversation and token: the latest request
local exchanges = {}      -- by frame: the other frame, and times
local open_pieces = {}    -- by conversation and token: the pieces so far
local whole_payloads = {} -- by the frame of the last piece
local whole_frames = {}   -- by the frame of a piece before it: that frame

function port_mgr.init()
  open_requests, exchanges, open_pieces, whole_payloads, whole_frames = {}, {}, {}, {}, {}
end

-- What tells one exchange of a capture from the others.
local function exchange_of(header)
  local is_cmi = header.kind >= cmi_request
  return ("%d %d %d %s"):format(header.process, header.connection, header.token, tostring(is_cmi))
end

local function time_of(seconds)
  local whole = math.floor(seconds)
  return NSTime.new(whole, math.floor((seconds - whole) * 1e9 + 0.5))
end

-- Requests meet their answers the first time that the capture is read.
local function link(header, pinfo)
  if pinfo.visited then return end
  local key = exchange_of(header)
  if is_request(header.kind) then
    open_requests[key] = {frame = pinfo.number, time = pinfo.rel_ts}
    return
  end
  local request = open_requests[key]
  if not request then return end
  open_requests[key] = nil
  exchanges[request.frame] = {response_in = pinfo.number}
  exchanges[pinfo.number] = {response_to = request.frame, time = time_of(pinfo.rel_ts - request.time)}
end

local function add_links(tree, pinfo)
  local exchange = exchanges[pinfo.number]
  if not exchange then return end
  if exchange.response_in then tree:add(own_fields.response_in, exchange.response_in):set_generated() end
  if exchange.response_to then tree:add(own_fields.response_to, exchange.response_to):set_generated() end
  if exchange.time then tree:add(own_fields.time, exchange.time):set_generated() end
end

-- Keeps a piece of a message that takes several frames. Returns false when pieces before it are missing.
local function keep_piece(header, piece, pinfo)
  local key = exchange_of(header) .. header.kind
  if header.payload_offset == 0 then open_pieces[key] = {bytes = ByteArray.new(), frames = {}} end
  local kept = open_pieces[key]
  if not kept or kept.bytes:len() ~= header.payload_offset then return false end
  kept.bytes:append(piece:range():bytes())
  if kept.bytes:len() < header.payload_size then
    kept.frames[#kept.frames + 1] = pinfo.number
    return true
  end
  for _, frame in ipairs(kept.frames) do whole_frames[frame] = pinfo.number end
  whole_payloads[pinfo.number] = kept.bytes
  open_pieces[key] = nil
  return true
end

-- The payload of a message, or nothing for a piece that is not its last one.
local function whole_payload(header, tvb, tree, pinfo)
  local size = tvb:len() - record_size
  if header.payload_offset == 0 and size >= header.payload_size then
    return size > 0 and tvb(record_size):tvb() or nil, true
  end
  local is_cut = size == 0 or tvb:len() < tvb:reported_len()
  if is_cut then
    tree:add_proto_expert_info(experts.cut)
    return header.payload_offset == 0 and size > 0 and tvb(record_size):tvb() or nil, header.payload_offset == 0
  end
  if not pinfo.visited and not keep_piece(header, tvb(record_size):tvb(), pinfo) then
    tree:add_proto_expert_info(experts.missing_piece)
  end
  tree:add(own_fields.payload, tvb(record_size))
  local bytes = whole_payloads[pinfo.number]
  if bytes then return bytes:tvb("Whole payload"), true end
  if whole_frames[pinfo.number] then tree:add(own_fields.whole_in, whole_frames[pinfo.number]):set_generated() end
  return nil, false
end

-- Who sent it and who gets it: the process that recorded the message is one end, the other one it knows by its service,
-- or not at all.
local function show_ends(header, pinfo)
  local process = ("%s[%d]"):format(header.process_name, header.process)
  local service = protocol.texts.sap[header.sap] or ("SAP %d"):format(header.sap)
  local is_client = (pinfo.p2p_dir == P2P_DIR_SENT) == is_request(header.kind)
  local client_end, service_end = is_client and process or "client", is_client and service or process
  pinfo.cols.src = is_request(header.kind) and client_end or service_end
  pinfo.cols.dst = is_request(header.kind) and service_end or client_end
end

local function summary_of(header, context)
  local parts = {protocol.texts.opcode[header.opcode] or ("opcode %d"):format(header.opcode)}
  parts[1] = parts[1] .. (is_request(header.kind) and " request" or " answer")
  local values = context and context.values or {}
  local status = header.error ~= 0 and header.error or values.status
  if status and status ~= 0 then parts[#parts + 1] = protocol.texts.status[status] or ("status %d"):format(status) end
  if context and context.attribute then parts[#parts + 1] = context.attribute end
  if values.count then parts[#parts + 1] = ("%d records"):format(values.count) end
  local subject = subject_of(values) or (context and context.subject)
  if subject then parts[#parts + 1] = subject end
  return table.concat(parts, ", ")
end

local function add_header(tree, tvb)
  local branch = tree:add(own_fields.record, tvb(0, record_size))
  local kind = tvb(1, 1):uint()
  local values = {}
  for _, field in ipairs(header_fields) do
    local is_absent = (field.name == "request_kind" and kind ~= cmi_request) or
                      (field.name == "error" and kind ~= cmi_request + 1)
    if not is_absent then add_field(branch, field, tvb:range(), values, {}) end
  end
  values.error = values.error or 0
  values.process_name = text_in(tvb(44, 20))
  return values
end

-- A message by its layout, or as bytes.
local function add_message(header, payload, tree)
  local message = protocol.messages[header.opcode]
  if not payload and (not message or header.error ~= 0) then return nil end
  local context = new_context(payload, header.flags % 2 == little_endian_host)
  if not message then
    tree:add(own_fields.payload, payload:range()):add_proto_expert_info(experts.unknown)
    return context
  end
  local pieces = is_request(header.kind) and message.request or message.answer
  if not payload then
    if #pieces > 0 then tree:add_proto_expert_info(experts.malformed, "The message has no payload") end
    return nil
  end
  local branch = tree:add(own_fields.message, payload:range())
  branch:set_text(message.name)
  add_payload(context, branch, pieces)
  return context
end

function port_mgr.dissector(tvb, pinfo, tree)
  if tvb:len() < record_size or tvb(0, 1):uint() ~= record_version or not kinds[tvb(1, 1):uint()] or
     tvb(3, 1):uint() ~= record_size then
    return 0
  end
  pinfo.cols.protocol = "PORT_MGR"
  local root = tree:add(port_mgr, tvb())
  local header = add_header(root, tvb)
  show_ends(header, pinfo)
  local payload, is_whole = whole_payload(header, tvb, root, pinfo)
  if not is_whole then
    pinfo.cols.info = ("%s, piece at %d"):format(summary_of(header), header.payload_offset)
    return tvb:len()
  end
  link(header, pinfo)
  add_links(root, pinfo)
  local context = add_message(header, payload, root)
  local summary = summary_of(header, context)
  root:append_text(", " .. summary)
  pinfo.cols.info = summary
  local status = context and context.values.status or 0
  if header.error ~= 0 or status ~= 0 then root:add_proto_expert_info(experts.refused) end
  return tvb:len()
end

DissectorTable.get("wtap_encap"):add((wtap_encaps or wtap).USER0, port_mgr)
