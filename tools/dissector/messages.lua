-- SPDX-License-Identifier: Apache-2.0
-- The messages of a capture: their records, which answers belong to which requests, and the pieces of large ones.

local open_requests = {}  -- by conversation and token: the latest request
local exchanges = {}      -- by frame: the other frame, and times
local open_pieces = {}    -- by conversation and token: the pieces so far
local whole_payloads = {} -- by the frame of the last piece
local whole_frames = {}   -- by the frame of a piece before it: that frame
local lone_pieces = {}    -- frames of pieces without those before them

function port_mgr.init()
  open_requests, exchanges = {}, {}
  open_pieces, whole_payloads, whole_frames, lone_pieces = {}, {}, {}, {}
end

-- What tells one exchange of a capture from the others.
local function exchange_of(header)
  local is_cmi = header.kind >= cmi_request
  return ("%d %d %d %s"):format(header.process, header.connection, header.token, tostring(is_cmi))
end

local function time_of(seconds)
  local nanoseconds = math.floor(seconds * 1e9 + 0.5)
  local whole = math.floor(nanoseconds / 1e9)
  return NSTime.new(whole, nanoseconds - whole * 1e9)
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

-- Keeps a piece of a message that takes several frames, the first time that the capture is read.
local function keep_piece(header, piece, pinfo)
  local key = exchange_of(header) .. header.kind
  if header.payload_offset == 0 then open_pieces[key] = {bytes = ByteArray.new(), frames = {}} end
  local kept = open_pieces[key]
  if not kept or kept.bytes:len() ~= header.payload_offset then
    lone_pieces[pinfo.number] = true
    return
  end
  kept.bytes:append(piece:bytes())
  if kept.bytes:len() < header.payload_size then
    kept.frames[#kept.frames + 1] = pinfo.number
    return
  end
  for _, frame in ipairs(kept.frames) do whole_frames[frame] = pinfo.number end
  whole_payloads[pinfo.number] = kept.bytes
  open_pieces[key] = nil
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
  if not pinfo.visited then keep_piece(header, tvb(record_size), pinfo) end
  if lone_pieces[pinfo.number] then tree:add_proto_expert_info(experts.missing_piece) end
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
  if values.count then parts[#parts + 1] = ("%d record%s"):format(values.count, values.count == 1 and "" or "s") end
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
