-- SPDX-License-Identifier: Apache-2.0
-- The engine: walks a payload along the tables of `protocol`, and never beyond the end of what was captured.

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
    if index > most_elements and left(context) > 0 then
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
  if known and known.value.kind == "text" then  -- which may be shorter than there is room for
    add_by_kind.text(branch, known.value, value)
  elseif not known or not add_field(branch, known.value, value, {}, context) then
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

