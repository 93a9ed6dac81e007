-- From here on the file is the same for every set of types; `tables`, above, says what they are.
--
-- What the library's decoders tolerate is a warning, what they refuse an error, in the same words. Decoding moves `at`
-- on, shows what it finds if it has a tree, and fails by an error: ABSENT, which the element around takes, or REFUSED.

local NAME = tables.name
local HEADER, ARRAY_TAG, COUNT_TAG, ENUMERATOR_TAG = 4, 10, 4, 6
local DEEPEST = 16 -- elements inside one another, where only their tags name them
local LONGEST = 1048576 -- bytes of a message in a stream, unless the framing says; more is damage
local ABSENT, REFUSED = {}, {}
local LEAST_ETHERTYPE = 1536 -- protocols of IP are less
local TCP, UDP = 2, 3 -- as pinfo.port_type has them

-- ---- Fields ---------------------------------------------------------------------------------------------

-- One of that name is there when a package has put the same file among the plugins of all users, say.
local is_new, proto = pcall(Proto, NAME, "TLV messages (" .. NAME .. ")")
if not is_new then return end
local fields = {}

-- One of a name: a dynamic array's count stands before it and in it.
local function field(kind, path, ...)
    local name = NAME .. "." .. path
    fields[name] = fields[name] or ProtoField[kind](name, ...)
    return fields[name]
end

local generic = {
    message = field("string", "message", "message"),
    candidate = field("string", "candidate", "candidate", "A message that fits as well as others"),
    fault = field("string", "fault", "fault", "Code of what is wrong; 'tlv explain' explains it"),
    skipped = field("none", "skipped", "skipped", "What decoders pass over"),
    undecoded = field("bytes", "undecoded", "undecoded"),
    element = field("none", "element", "element"), value = field("bytes", "element.value", "value"),
    length = field("uint16", "element.length", "length"), count = field("uint16", "element.count", "count"),
}
local experts = {
    error = ProtoExpert.new(NAME .. ".error", "refused", expert.group.MALFORMED, expert.severity.ERROR),
    tolerated = ProtoExpert.new(NAME .. ".tolerated", "tolerated", expert.group.PROTOCOL, expert.severity.WARN),
    note = ProtoExpert.new(NAME .. ".note", "not decoded", expert.group.UNDECODED, expert.severity.NOTE),
}
proto.experts = experts

-- ---- What is being looked at, and what is wrong with it ---------------------------------------------------

local tvb, input, size -- the payload, its bytes, and where they end
local own -- this dissector; what is made once a packet takes most of the time
local visible, wanted -- whether anybody reads texts, or looks at any field
local nesting -- of elements that only their tags name
local at -- how far decoding is
local strict -- whether to give up at once on whatever is not flawless
local path, depth -- names and indexes that lead to where it is
local allocated, limit -- bytes that a decoder's blocks take, and may take
local fault -- the last one: code, at, text

local function look_at(buffer, tree)
    tvb, input, size, nesting = buffer, buffer:raw(), buffer:len(), 0
    own = own or Dissector.get(NAME)
    visible, wanted = tree.visible, tree:referenced(own)
end

local function unsigned(from, width)
    local value = 0
    for i = from + 1, from + width do value = value * 256 + input:byte(i) end
    return value
end

local function join(a, b) return a == "" and b or b == "" and a or a .. "." .. b end

local function set_fault(code, from, found, allowed)
    if strict then error(REFUSED, 0) end
    local place = path[1]
    for i = 2, depth do
        place = type(path[i]) == "number" and place .. "[" .. path[i] .. "]" or join(place, path[i])
    end
    local values = { path = place, offset = from, found = found, allowed = allowed }
    fault = { code = code, at = from, text = tables.codes[code]:gsub("{(%w+)}", values) }
end

local function report(tree, kind, code, from, text)
    local item = tree:add(generic.fault, tvb:range(from, from < tvb:len() and 1 or 0), code)
    item:set_text(kind .. "[" .. code .. "]: " .. text):set_generated()
    item:add_proto_expert_info(experts[kind], text)
end

local function give_up(outcome, ...)
    set_fault(...)
    error(outcome, 0)
end

local function tolerate(tree) if tree then report(tree, "tolerated", fault.code, fault.at, fault.text) end end

local function deviate(tree, ...)
    set_fault(...)
    tolerate(tree)
end

-- ---- Elements -------------------------------------------------------------------------------------------

local by_tags -- below: needs all that is above it

local function need(from, count)
    if count > size - from then give_up(REFUSED, "truncated", from, size - from, count) end
end

-- An item of an array says which one it is, where anybody reads it.
local function numbered(item, index)
    if type(index) == "number" then item:prepend_text("[" .. index .. "] ") end
    return item
end

-- Gives the length of the element here, which must be of this tag.
local function header(tag)
    need(at, HEADER)
    local a, b, c, d = input:byte(at + 1, at + 4)
    if a * 256 + b ~= tag then give_up(ABSENT, "wrong-tag", at, a * 256 + b, tag) end
    return c * 256 + d
end

-- A number's element, which the field shows.
local function number(tag, width, tree, shown)
    local length = header(tag)
    if length ~= width then give_up(ABSENT, "wrong-length", at + 2, length, width) end
    need(at, HEADER + width)
    at = at + HEADER + width
    if tree then numbered(tree:add(shown, tvb:range(at - width, width)), visible and path[depth]) end
end

-- The count of an array's element that begins there, or nothing.
local function count_at(from, stop)
    local opening = stop - from >= HEADER + 6 and input:sub(from + 5, from + 8)
    return opening == "\0\4\0\2" and unsigned(from + 8, 2)
end

-- An element around others: goes to where its own length says, whatever became of what is inside.
local function enclose(tag, slot, tree, inside, before)
    local start, depth_0, length = at, depth, header(tag)
    need(at, HEADER + length)
    local stop, node, range = start + HEADER + length, tree, tree and tvb:range(at, HEADER + length)
    if tree and slot.count then node = tree:add(slot.count, range, count_at(at, stop) or 0) end
    if tree and slot.type.members then node = numbered(tree:add(slot.field, range), visible and path[depth]) end
    at = at + HEADER
    local fine, outcome = true, nil
    if strict then inside(slot, node, stop, before) else fine, outcome = pcall(inside, slot, node, stop, before) end
    depth = depth_0
    if fine and at ~= stop then
        deviate(node, "length-mismatch", start + 2, length, at - start - HEADER)
    elseif outcome == ABSENT then
        tolerate(node)
    elseif not fine then
        error(outcome, 0)
    end
    if node and at < stop then by_tags(node:add(generic.skipped, tvb:range(at, stop - at)), at, stop) end
    at = stop
end

-- ---- Types: how each kind is read -----------------------------------------------------------------------

-- A slot is a type in its place, with the field that shows it there.
local read = {}

-- Where flawless bytes end that a pattern knows.
local function find_flawless(type, from, stop)
    local _, behind = input:find(type.pattern, from + 1)
    return behind and behind <= stop and behind
end

local function step(slot, name, tree, before)
    if strict and slot.type.pattern then
        at = find_flawless(slot.type, at, size) or error(REFUSED, 0)
        return
    end
    depth = depth + 1
    path[depth] = name
    slot.read(slot, tree, before)
    depth = depth - 1
end

function read.scalar(slot, tree) number(slot.type.reads, slot.type.size, tree, slot.field) end

local function enumerator(slot, tree) number(ENUMERATOR_TAG, 4, tree, slot.field) end

function read.enumeration(slot, tree)
    if slot.ends_by_length then return enclose(slot.type.tag, slot, tree, enumerator) end
    local start, length = at, header(slot.type.tag)
    at = at + HEADER
    enumerator(slot, tree)
    if length ~= 8 then deviate(tree, "length-mismatch", start + 2, length, 8) end
end

local function members(slot, tree)
    local before
    for _, member in ipairs(slot.type.members) do
        step(member, member.name, tree, before)
        before = member.feeds and unsigned(at - member.feeds, member.feeds)
    end
end

function read.structure(slot, tree) enclose(slot.type.tag, slot, tree, members) end

function read.message(slot, tree)
    local start, node = at, tree and tree:add(slot.field, tvb:range(at, size - at))
    members(slot, node)
    if node then node:set_len(at - start) end
end

function read.union(slot, tree, before)
    local chosen = slot.chosen[before or 0]
    if chosen then step(chosen, chosen.name, tree) end
end

local function add_bytes(tree, shown, label, from, count)
    local item, text = tree:add(shown, tvb:range(from, count)), input:sub(from + 1, from + count)
    if visible and not text:find("[^ -~]") then item:set_text(label .. ': "' .. text .. '"') end
end

local items = {} -- of arrays, by what stands for them

function items.bytes(slot, tree, count, stop)
    need(at, count)
    if tree then add_bytes(tree, slot.field, slot.label, at, count) end
    at = at + count
    if count == slot.type.capacity then return end
    if at == stop then return deviate(tree, "terminator-missing", at, 0, 1) end
    local byte = at < stop and input:byte(at + 1) or 0 -- behind the end the length is wrong altogether
    at = at + 1
    if byte ~= 0 then deviate(tree, "terminator-not-zero", at - 1, byte, 0) end
end

function items.packed(slot, tree, count)
    local width = slot.item.type.size
    need(at, count * width)
    for i = 0, tree and count - 1 or -1 do
        numbered(tree:add(slot.field, tvb:range(at + i * width, width)), visible and i)
    end
    at = at + count * width
end

function items.elements(slot, tree, count)
    for i = 0, count - 1 do step(slot.item, i, tree) end
end

local function array(slot, tree, stop, before)
    local type = slot.type
    depth = depth + 1
    path[depth] = "count"
    number(COUNT_TAG, 2)
    local count, most = unsigned(at - 2, 2), type.capacity or 2 ^ (8 * type.count_width) - 1
    if count > most then
        local what = type.capacity and "capacity" or "field"
        give_up(REFUSED, "count-exceeds-" .. what, at - 2, count, ("%.0f"):format(most))
    elseif type.is_dynamic and before and before ~= count then
        deviate(tree, "count-mismatch", at - 2, before, count)
    end
    depth = depth - 1
    if type.is_dynamic then -- the block that a decoder takes for the items
        if type.are == "bytes" then need(at, count) end
        allocated = allocated + (type.are == "bytes" and count + 1 or count * slot.item.type.size)
        if allocated > limit then give_up(REFUSED, "allocation-limit", at - 2, allocated, limit) end
    end
    items[type.are](slot, tree, count, stop)
end

function read.array(slot, tree, before) enclose(ARRAY_TAG, slot, tree, array, before) end

local types, by_tag, tag_names = {}, {}, {}

-- Flawless bytes of a type whose layout is always the same are those that a pattern finds: headers as they are, and
-- anything for the values. That takes a tenth of the time that decoding them does.
local function literal(...)
    local bytes = {}
    for i, number in ipairs({ ... }) do bytes[i] = string.char(math.floor(number / 256), number % 256) end
    return (table.concat(bytes):gsub("%p", "%%%0"))
end

-- Gives the pattern; nothing for other types.
local function layout(type)
    local length = type.min_encoded - HEADER
    if type.kind == "scalar" then return literal(type.reads, length) .. ("."):rep(length) end
    if type.kind == "enumeration" then return literal(type.tag, 8, ENUMERATOR_TAG, 4) .. "...." end
    local parts = {}
    for i, member in ipairs(type.members or {}) do
        parts[i] = layout(types[member.type])
        if not parts[i] then return nil end
    end
    local inside = table.concat(parts)
    return type.kind == "message" and inside or type.kind == "structure" and literal(type.tag, length) .. inside
end

-- `above` is what the field's name begins with; the tree calls it by the label behind that.
local function slot_of(type, name, above, label, doc)
    local slot, full = { type = type, name = name, label = label }, join(above, label)
    slot.read = read[type.kind] or read.array
    if type.kind == "scalar" then
        slot.field = field(type.name == "char" and "uint8" or type.name, full, label, base.DEC, nil, nil, doc)
    elseif type.kind == "enumeration" then
        slot.field = field("uint32", full, label, base.DEC, type.values, nil, doc)
    elseif type.are == "bytes" then
        slot.field = field("bytes", full, label, base.NONE, doc)
    elseif type.kind == "union" then
        slot.chosen = {}
        for _, each in ipairs(type.alternatives) do
            local alternative = slot_of(types[each.type], each.name, above, join(label, each.name))
            alternative.ends_by_length = table.concat(each.flags or {}, " "):find("end_by_length")
            for _, value in ipairs(each.values) do slot.chosen[value] = alternative end
        end
    elseif type.element then
        slot.item = slot_of(types[type.element], nil, above, label, doc)
        slot.field, slot.count = slot.item.field, field("uint32", full .. ".count", label .. ".count", base.DEC)
    else
        slot.field = field("none", full, label == type.name and label or label .. ": " .. type.name, doc)
    end
    return slot
end

for _, type in ipairs(tables.types) do
    types[type.name] = type
    if type.element then
        type.is_dynamic = not type.capacity
        type.are = type.kind:find("byte") and "bytes" or type.packed and "packed" or "elements"
    elseif type.tag then
        by_tag[type.tag], tag_names[type.tag] = type, type.name
    end
    for _, each in ipairs(type.enumerators or {}) do
        type.values = type.values or {}
        type.values[each.value] = each.name
    end
end
for _, type in ipairs(tables.types) do
    local pattern = layout(type)
    type.pattern = pattern and "^" .. pattern
end
generic.tag = field("uint16", "element.tag", "tag", base.DEC, tag_names)
for _, type in ipairs(tables.types) do
    local before
    type.slot = slot_of(type, type.name, "", type.name, type.doc)
    for i, member in ipairs(type.members or {}) do
        local slot = slot_of(types[member.type], member.path or "", type.name, member.path or "", member.doc)
        if before and (slot.chosen or slot.type.is_dynamic) then before.feeds = before.type.size end
        type.members[i], before = slot, slot
    end
end
proto.fields = fields

-- Reads one of the type, on bytes that end at `stop`. Gives where it ends; nothing, and a fault, when it is refused.
local function whole(type, from, stop, tree, is_strict)
    if is_strict and type.pattern then return find_flawless(type, from, stop) end
    local at_0, size_0, strict_0, path_0, depth_0, used_0, limit_0 = at, size, strict, path, depth, allocated, limit
    at, size, strict, path, depth = from, stop, is_strict, { type.name }, 1
    allocated, limit = 0, 64 * (stop - from) + 65536
    local fine, outcome = pcall(type.slot.read, type.slot, tree)
    local behind = fine and at
    at, size, strict, path, depth, allocated, limit = at_0, size_0, strict_0, path_0, depth_0, used_0, limit_0
    if not fine and outcome ~= ABSENT and outcome ~= REFUSED then error(outcome, 0) end
    return behind
end

-- ---- By tags: what nobody knows the type of -------------------------------------------------------------

-- Where the element ends that begins there; nothing when it is none as a whole.
local function end_of_element(from, stop)
    local behind = stop - from >= HEADER and from + HEADER + unsigned(from + 2, 2)
    return behind and behind <= stop and behind
end

-- How many elements fill these bytes; nothing when they do not.
local function elements_in(from, stop)
    local count = 0
    while from and from < stop do from, count = end_of_element(from, stop), count + 1 end
    return from and count
end

local function untyped(tree, from, stop)
    local node, tag = tree:add(generic.element, tvb:range(from, stop - from)), unsigned(from, 2)
    local count, inside = tag == ARRAY_TAG and count_at(from, stop), from + HEADER
    node:append_text(": tag " .. tag)
    node:add(generic.tag, tvb:range(from, 2))
    node:add(generic.length, tvb:range(from + 2, 2))
    if count then
        node:add(generic.count, tvb:range(inside + 4, 2))
        inside = inside + 6
    end
    local found = nesting < DEEPEST and elements_in(inside, stop)
    if found and found > 0 and (not count or count == found) then
        by_tags(node, inside, stop)
    elseif inside < stop then
        local terminated = count == stop - inside - 1 and input:byte(stop) == 0
        add_bytes(node, generic.value, "value", inside, terminated and count or stop - inside)
    end
end

-- Gives where something begins that is no whole element.
function by_tags(tree, from, stop)
    local behind = end_of_element(from, stop)
    nesting = nesting + 1
    while behind do
        local type = by_tag[unsigned(from, 2)]
        local seen = type and not wanted and whole(type, from, behind, nil, true) == behind
        if not seen and type and nesting <= DEEPEST and whole(type, from, behind) == behind then
            whole(type, from, behind, tree)
        elseif not seen then
            untyped(tree, from, behind)
        end
        from, behind = behind, end_of_element(behind, stop)
    end
    nesting = nesting - 1
    if from < stop then tree:add(generic.undecoded, tvb:range(from, stop - from)) end
    return from < stop and from
end

-- ---- Which message --------------------------------------------------------------------------------------

-- Messages by the tags of their members. One with a member that no tag tells apart is not recognized.
local sequences, holders = {}, {} -- and how many messages have a key
for _, type in ipairs(tables.types) do
    local node = type.kind == "message" and sequences
    for _, slot in ipairs(node and type.members or {}) do
        local tag = slot.type.tag or 0
        node[tag] = node[tag] or {}
        node = node[tag]
    end
    if node then
        node.names = node.names or {}
        table.insert(node.names, type.name)
        node.keyed = node.keyed or type.key
        holders[type.key or 0] = (holders[type.key or 0] or 0) + (type.key and 1 or 0)
    end
end

-- Which of the messages begin there, as far as keys tell, and whether a key that only one has says so.
local function by_keys(node, from)
    if not node.keyed then return node.names end
    local names = {}
    for _, name in ipairs(node.names) do
        local key, key_at = types[name].key, types[name].key_at
        local has_key = key_at and unsigned(from + key_at, 4) == key
        if has_key and holders[key] == 1 then return { name }, true end
        if has_key or not key_at then names[#names + 1] = name end
    end
    return names[1] and names
end

-- The payload as the fewest messages one behind the other: { from, stop, names, rest, messages, ways }. Nothing unless
-- each element is flawless, which is what makes a message of them flawless.
local function divide()
    local tags, starts = {}, { 0 }
    while starts[#starts] < size do
        local from = starts[#starts]
        local tag = size - from >= HEADER and unsigned(from, 2)
        local behind = by_tag[tag] and whole(by_tag[tag], from, size, nil, true)
        if not behind then return nil end
        tags[#tags + 1], starts[#starts + 1] = tag, behind
    end
    local best = { [#tags + 1] = { messages = 0, ways = 1 } }
    for first = #tags, 1, -1 do
        local node, next, found = sequences[tags[first]], first + 1, nil
        while node do
            local rest, names, named = node.names and best[next], nil, nil
            if rest then names, named = by_keys(node, starts[first]) end
            local fewer = names and (found and found.messages or math.huge) - rest.messages - 1 -- than before
            if names and (fewer > 0 or fewer == 0 and named and not found.named) then
                found = { from = starts[first], stop = starts[next], names = names, named = named, rest = rest,
                    messages = rest.messages + 1, ways = rest.ways }
            elseif fewer == 0 and not named == not found.named then
                found.ways = 2 -- or more
            end
            node, next = node[tags[next] or -1], next + 1
        end
        best[first] = found
    end
    return best[1]
end

-- ---- Preferences ----------------------------------------------------------------------------------------

local prefs = proto.prefs
prefs.types = Pref.string("Types", "", "udp/9000=TYPE, tcp/9000=TYPE, ethertype/0x88B5=TYPE, ip/89=TYPE, " ..
    "msg_type=17=TYPE; by spaces or commas apart")
prefs.types_file = Pref.string("File of types", "", "The same in a file, where # begins a comment")
prefs.default_type = Pref.string("Type of everything else", "", "Empty: the only message that fits")
prefs.framing = Pref.string("Framing", "segment", "segment: whole messages in each TCP segment; " ..
    "length:WIDTH@OFFSET[+HEADER][,little][,inclusive][,adjust=N][,most=N]: before each in a TCP stream a header " ..
    "with its length; skip:N: bytes to skip")
prefs.heuristic = Pref.bool("Recognize messages on all ports", false, "Whole payloads without deviations")

local settings = { udp = {}, tcp = {}, ethertype = {}, ip = {}, msg_type = {}, framing = {} }
local tables_of = { udp = "udp.port", tcp = "tcp.port", ethertype = "ethertype", ip = "ip.proto" }
local largest = { msg_type = 4294967295, ip = 255 } -- 65535 for the others

local function complain(...) report_failure(NAME .. ": " .. table.concat({ ... })) end

local function type_named(name)
    return types[name] or by_tag[tonumber(name) or -1] or complain("there is no type '", name, "'")
end

local function read_types(result, text)
    for word in text:gsub("#[^\n]*", ""):gmatch("[^%s,]+") do
        local kind, key, name = word:gsub("^msg_type=", "msg_type/"):match("^([%a_]+)/(%w+)=(.+)$")
        if result[kind] and (tonumber(key) or math.huge) <= (largest[kind] or 65535) then
            result[kind][tonumber(key)] = type_named(name)
        else
            complain("'", word, "' is none of udp/PORT=TYPE, tcp/PORT=TYPE, ethertype/N=TYPE, ip/N=TYPE, msg_type=N=TYPE")
        end
    end
end

-- What may follow a length, each once.
local function read_option(framing, word)
    local name, value = word:match("^(%l+)=(%-?%d+)$")
    if word == "little" then name, value = "little", 1 end
    if word == "inclusive" then name, value = "adjust", -framing.header end
    local range = ({ little = { 1, 1 }, adjust = { -2147483648, 2147483647 }, most = { 0, 1073741824 } })[name]
    local is_fine = range and not framing[name] and tonumber(value) >= range[1] and tonumber(value) <= range[2]
    if is_fine then framing[name] = tonumber(value) end
    return is_fine
end

local function read_length_framing(width, offset, rest)
    local framing = { width = tonumber(width), offset = tonumber(offset), header = width + offset }
    local header, options = rest:match("^%+(%d+)(.*)$")
    options = options or rest
    local is_fine = (not header or tonumber(header) >= framing.header) and options:match("^,?") == options:sub(1, 1)
    framing.header = tonumber(header) or framing.header
    for word in options:gmatch(",([^,]*)") do is_fine = is_fine and read_option(framing, word) end
    framing.adjust, framing.most = framing.adjust or 0, framing.most ~= 0 and framing.most or LONGEST
    framing.most = math.min(framing.most, 256 ^ width - 1 + framing.adjust)
    return is_fine and framing.header <= 65535 and framing.most >= math.max(framing.adjust, 0) and framing
end

-- The words of tlvmsg_framing_from_text.
local function read_framing(text)
    local width, offset, rest = text:match("^length:([1-4])@(%d+)(.*)$")
    local skip = tonumber(text:match("^skip:(%d+)$"))
    local framing = width and read_length_framing(width, offset, rest) or skip and skip <= 65535 and { skip = skip }
    if not framing and text ~= "segment" and text ~= "" then
        complain("framing '", text, "' is none of segment, length:WIDTH@OFFSET[+HEADER][,little][,inclusive]",
            "[,adjust=N][,most=N], skip:N")
    end
    return framing or {}
end

function proto.prefs_changed()
    local result = { udp = {}, tcp = {}, ethertype = {}, ip = {}, msg_type = {} }
    local file, reason = io.open(prefs.types_file, "rb")
    if not file and prefs.types_file ~= "" then complain(reason) end
    read_types(result, (file and file:read("*a") or "") .. "\n" .. prefs.types)
    if file then file:close() end
    result.framing = read_framing(prefs.framing)
    result.default = prefs.default_type ~= "" and type_named(prefs.default_type)
    for kind, name in pairs(tables_of) do
        local numbers = DissectorTable.get(name)
        for number in pairs(settings[kind]) do numbers:remove(number, proto) end
        for number in pairs(result[kind]) do numbers:add(number, proto) end
    end
    settings = result
end

-- Where a flawless session header has the number that is the message's type.
local session, number_at = types.app_sess_hdr, 0
for _, slot in ipairs(session and session.members or {}) do
    number_at = number_at + slot.type.min_encoded
    if slot.name == "msg_type" then break end
end

local function configured(pinfo, from)
    local has_header = session and size - from >= number_at + 4 and unsigned(from, 2) == session.tag
    local ports = pinfo.port_type == UDP and settings.udp or pinfo.port_type == TCP and settings.tcp or {}
    local numbers = pinfo.match < LEAST_ETHERTYPE and settings.ip or settings.ethertype
    if pinfo.match == pinfo.dst_port or pinfo.match == pinfo.src_port then numbers = ports end
    return has_header and settings.msg_type[unsigned(from + number_at, 4)] or ports[pinfo.dst_port] or
        ports[pinfo.src_port] or numbers[pinfo.match] or settings.default
end

-- ---- Payloads -------------------------------------------------------------------------------------------

local titles = {} -- of the messages in this packet, for the list of packets

-- Gives where it ends, `known` where it is known to be flawless; nothing when it is refused.
local function show_message(tree, type, from, stop, known)
    local behind = not wanted and (known or whole(type, from, stop, nil, true)) or whole(type, from, stop, tree)
    if wanted then
        tree:add(generic.message, tvb:range(from, (behind or stop) - from), type.name):set_generated()
    end
    titles[#titles + 1] = type.name .. (behind and "" or " [" .. fault.code .. "]")
    if not behind then report(tree, "error", fault.code, fault.at, fault.text) end
    return behind
end

-- Of the type that the preferences say; what follows it too when it is flawless.
local function show_configured(pinfo, tree, type)
    local from, behind = nil, 0
    repeat
        from, behind = behind, show_message(tree, type, behind, size)
        if not behind then return fault.code == "wrong-tag" and by_tags(tree, fault.at, size) end
        path, depth, type = { type.name }, 1, behind > from and behind < size and configured(pinfo, behind)
    until not type or not whole(type, behind, size, nil, true)
    if behind < size then
        deviate(tree, "trailing-bytes", behind, size - behind, 0)
        by_tags(tree, behind, size)
    end
end

local function show_unknown(tree, from, stop, code, text)
    titles[#titles + 1] = code
    report(tree, "note", code, from, text)
    local incomplete = by_tags(tree, from, stop)
    if incomplete then report(tree, "error", "truncated", incomplete, "no whole element at byte " .. incomplete) end
end

local function show_recognized(tree, part)
    local from, stop, names = part.from, part.stop, part.names
    if #names == 1 then return show_message(tree, types[names[1]], from, stop, stop) end
    local range = wanted and tvb:range(from, stop - from)
    for _, name in ipairs(wanted and names or {}) do tree:add(generic.candidate, range, name):set_generated() end
    show_unknown(tree, from, stop, "ambiguous", "all of these fit: " .. table.concat(names, ", "))
end

-- The payload is what is behind so many bytes.
local function show(buffer, from, pinfo, tree)
    look_at(from > 0 and buffer:range(from):tvb() or buffer, tree)
    local type, lost, code, text = configured(pinfo, 0), buffer:reported_len() - buffer:len(), nil, nil
    if lost > 0 then code, text = "cut", "the capture lacks the last " .. lost .. " bytes" end
    if type and code then report(tree, "note", code, 0, text) end
    if type then return show_configured(pinfo, tree, type) end
    local part = not code and divide()
    local nothing = pinfo.port_type == TCP and "segment" or "unknown-message"
    if not part and not code then code, text = nothing, "no message fits the whole of it" end
    if part and part.ways > 1 then code, text = "ambiguous", part.messages .. " messages, divided in several ways" end
    if code then return show_unknown(tree, 0, size, code, text) end
    while part.names do
        show_recognized(tree, part)
        part = part.rest
    end
end

-- ---- Streams --------------------------------------------------------------------------------------------

-- The bytes of the body that a header there says; nothing when no body can have so many.
local function body_size(from)
    local framing, value = settings.framing, 0
    for i = 1, framing.width do
        value = value * 256 + input:byte(from + framing.offset + (framing.little and framing.width + 1 - i or i))
    end
    value = value + framing.adjust
    return value >= 0 and value <= framing.most and value
end

-- How far a body of so many bytes has to be there to say more, if what is there of it begins flawlessly like messages.
local function begins_like_messages(from, length)
    local node, there, stop = sequences, math.min(size, from + length), from + length
    while there - from >= HEADER do
        local tag, behind = unsigned(from, 2), from + HEADER + unsigned(from + 2, 2)
        node = node[tag] or node.names and sequences[tag]
        if not node or behind > stop then return nil end
        if behind > there then return behind end
        if not whole(by_tag[tag], from, behind, nil, true) then return nil end
        from = behind
    end
    return from + HEADER <= stop and from + HEADER or from == stop and stop or nil
end

-- The same, also of what is configured; where all is there, its end if it fits.
local function fits(pinfo, from, length)
    if not length or length < HEADER then return nil end
    local stop, type = from + length, configured(pinfo, from)
    local behind = type and whole(type, from, math.min(stop, size))
    if type and (behind == stop or stop > size and fault.code == "truncated") then return stop end
    local needed = begins_like_messages(from, length)
    if stop > size or not needed then return needed end
    local input_0, size_0 = input, size
    input, size = input:sub(from + 1, stop), length
    local part = divide()
    input, size = input_0, size_0
    return part and stop
end

-- Where the next frame begins, and where it ends: here, unless no frame can be here, or its body does not fit and another
-- frame that fits begins inside it. Nothing where none is. With `last` it ends where the buffer does. The end of what has
-- not come is believed element by element: behind one that is wrong Wireshark would show twice what it waited for.
local function find_frame(buffer, pinfo, from, last)
    local header = settings.framing.header
    tvb, input, size = buffer, buffer:raw(), buffer:len()
    if size - from < header then return nil end
    local length = body_size(from)
    local stop = length and from + header + length
    for at = from, math.min(size, stop or size) - header do
        local there = body_size(at)
        local may_be = last and there and at + header + there == size or
            not last and (at == from or size - at >= header + HEADER) -- so much tells most of what is none
        local known = may_be and fits(pinfo, at + header, there)
        if known then return at, known end
    end
    if stop and stop <= size then return from, stop end
end

-- Passed over, up to the end of a frame or, where there is none, of the segment.
local function framed_length(buffer, pinfo, from)
    local _, stop = find_frame(buffer, pinfo, from)
    return (stop or buffer:len()) - from
end

local function show_framed(buffer, pinfo, tree)
    local root, at = tree:add(proto, buffer:range()), find_frame(buffer, pinfo, 0, true)
    local behind = (at or buffer:len()) + settings.framing.header
    if at ~= 0 then
        look_at(buffer, root)
        report(root, "note", "segment", 0, "bytes passed over without a whole message: " .. (at or buffer:len()))
    end
    if buffer:len() > behind then show(buffer, behind, pinfo, root) end
end

local function list_titles(pinfo)
    if #titles == 0 then return end
    local columns = pinfo.cols
    columns.protocol, columns.info, titles = NAME:upper(), table.concat(titles, ", "), {}
end

function proto.dissector(buffer, pinfo, tree)
    local framing, skip = settings.framing, settings.framing.skip or 0
    if framing.header and pinfo.port_type == TCP then
        dissect_tcp_pdus(buffer, tree, framing.header, framed_length, show_framed)
    elseif buffer:len() > skip then
        show(buffer, skip, pinfo, tree:add(proto, buffer:range()))
    end
    list_titles(pinfo)
end

local function recognize(buffer, pinfo, tree)
    if not prefs.heuristic or buffer:reported_len() > buffer:len() then return false end
    look_at(buffer, tree)
    local part = divide()
    if not part or part.messages ~= 1 then return false end
    show_recognized(tree:add(proto, buffer:range()), part)
    list_titles(pinfo)
    return true
end

for kind, name in pairs(tables_of) do
    DissectorTable.get(name):add_for_decode_as(proto)
    if kind == "udp" or kind == "tcp" then proto:register_heuristic(kind, recognize) end
end
