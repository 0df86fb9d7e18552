#include "norvane/dap/VariableTree.h"

#include <algorithm>
#include <set>

static std::string ToLower(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

static std::string Join(const std::string& path, const std::string& step)
{
    return path.empty() || step.starts_with('[') ? path + step : path + "." + step;
}

CVariableTree::CVariableTree(const CProgramRun& program) : m_Program(program)
{
    m_Areas = {{"Globals", "", '\0', {}, 0},      {"Retained", "", '\0', {}, 0},   {"Inputs", "input", 'I', {}, 0},
               {"Outputs", "output", 'Q', {}, 0}, {"Memory", "memory", 'M', {}, 0}, {"Located", "located variables", '\0', {}, 0}};
    const CImage& image = *program.m_pImage;
    for (const DebugVariable& variable : image.m_DebugInfo.m_Globals) {
        const std::optional<NamedObject> object = program.m_pNames->GetGlobal(variable);
        if (!object) continue;
        std::size_t area = variable.isRetain ? 1 : 0;
        const Region* pRegion = image.FindRegion(object->address);
        for (std::size_t i = 2; i < m_Areas.size(); ++i)
            if (pRegion && pRegion->name == m_Areas[i].region) area = i;
        m_Areas[area].variables.push_back(&variable);
    }
    for (Area& area : m_Areas)
        for (const Region& region : image.m_Regions)
            if (area.letter && region.name == area.region) area.bytes = region.size;
}

// ---- Names

CVariableTree::LocalScope CVariableTree::MakeScope(const DebugFrame& frame) const
{
    LocalScope scope;
    scope.pou = frame.frame.pou;
    scope.begin = frame.frame.begin;
    if (scope.pou >= 0) scope.headed = m_Program.m_pNames->GetFrameVariables(frame.frame);
    return scope;
}

std::optional<NamedObject> CVariableTree::FindHeaded(const LocalScope& scope, std::string_view name) const
{
    const std::string lower = ToLower(name);
    for (const NamedObject& object : scope.headed)
        if (ToLower(object.name) == lower) return object;
    return {};
}

// A variable of a scope that is a single value, or an instance whose type is known.
std::optional<NamedObject> CVariableTree::FindPart(const LocalScope& scope, const std::string& path,
                                                   std::string& error) const
{
    if (m_Program.m_pNames->IsWhole(scope.pou, path)) {
        error = path + ": of this structure or array the code names no more than that";
        return {};
    }
    if (std::optional<NamedObject> object = FindHeaded(scope, path)) return object;
    return m_Program.m_pNames->FindLocal(scope.pou, scope.begin, path, error);
}

std::optional<NamedObject> CVariableTree::FindObject(const DebugFrame& frame, std::string_view name,
                                                     std::string& error) const
{
    const CNames& names = *m_Program.m_pNames;
    if (frame.frame.pou < 0 || name.starts_with('%')) return names.Find(name, error);
    const std::optional<NamedObject> instance = names.GetInstance(*m_Program.m_pMachine, frame.frame);
    if (instance) {
        if (!frame.hasBegun) return names.Find(name, error);
        std::optional<NamedObject> member = names.FindBelow(*instance, "." + std::string(name), error);
        return member ? member : names.Find(name, error);
    }
    const LocalScope scope = MakeScope(frame);
    if (std::optional<NamedObject> object = FindPart(scope, std::string(name), error)) return object;
    const bool isOwn = names.IsLocal(scope.pou, name) ||
                       FindHeaded(scope, name.substr(0, name.find_first_of(".["))).has_value();
    return isOwn ? std::nullopt : names.Find(name, error);
}

const CVariableTree::Parts& CVariableTree::GetParts(int pou)
{
    const auto [found, isNew] = m_Parts.try_emplace(pou);
    Parts& parts = found->second;
    if (!isNew) return parts;
    for (LocalPart& part : m_Program.m_pNames->GetLocalParts(pou)) {
        if (part.count == 0) parts.names.emplace_back(ToLower(part.before), part.before);
        else parts.arrays[ToLower(part.before)].push_back(std::move(part));
    }
    std::sort(parts.names.begin(), parts.names.end());
    return parts;
}

// "recipe" of "recipe.count", "[2]" of "[2].x".
static std::string_view FirstStep(std::string_view text)
{
    if (!text.starts_with('[')) return text.substr(0, text.find_first_of(".["));
    const std::size_t close = text.find(']');
    return text.substr(0, close == std::string_view::npos ? close : close + 1);
}

// The steps that a name goes on with, each once: members by their names, elements by their numbers.
class CSteps
{
public:
    void Add(std::string_view rest)
    {
        if (rest.starts_with('.')) rest.remove_prefix(1);
        const std::string_view step = FirstStep(rest);
        if (step.empty() || step.starts_with("__") || !m_Known.insert(ToLower(step)).second) return;
        m_Steps.emplace_back(step);
    }
    std::vector<std::string> Take()
    {
        // "[9]" comes in front of "[10]"; members stay in their order.
        const auto rank = [](const std::string& step) {
            const bool isElement = step.starts_with('[');
            return std::pair(isElement ? step.size() : 0, isElement ? std::string_view(step) : std::string_view());
        };
        std::stable_sort(m_Steps.begin(), m_Steps.end(),
                         [&](const std::string& a, const std::string& b) { return rank(a) < rank(b); });
        return std::move(m_Steps);
    }

private:
    std::vector<std::string> m_Steps;
    std::set<std::string> m_Known;
};

std::vector<std::string> CVariableTree::GetPartNames(const LocalScope& scope, const std::string& path)
{
    CSteps steps;
    const Parts& parts = GetParts(scope.pou);
    const std::string lower = ToLower(path);
    for (const NamedObject& object : scope.headed)
        if (path.empty()) steps.Add(object.name);
    auto name = std::lower_bound(parts.names.begin(), parts.names.end(), std::pair(lower, std::string()));
    for (; name != parts.names.end() && name->first.starts_with(lower); ++name) {
        const std::string_view rest = std::string_view(name->second).substr(path.size());
        if (path.empty() || rest.starts_with('.') || rest.starts_with('[')) steps.Add(rest);
    }
    // An array whose elements are known together: all of them, or what is behind one of them.
    const std::size_t open = std::min(lower.find('['), lower.size());
    const auto arrays = parts.arrays.find(lower.substr(0, open));
    if (arrays == parts.arrays.end()) return steps.Take();
    const std::size_t close = lower.find(']', open);
    for (const LocalPart& part : arrays->second) {
        constexpr std::int64_t most = 10'000;
        for (std::int64_t i = 0; open == lower.size() && i < std::min(part.count, most); ++i)
            steps.Add("[" + std::to_string(i) + "]");
        const std::size_t behind = close == std::string::npos ? 0 : lower.size() - close - 1;
        const bool goesOn = close != std::string::npos && ToLower(part.behind).starts_with(lower.substr(close + 1));
        if (!goesOn) continue;
        const std::string_view rest = std::string_view(part.behind).substr(behind);
        if (rest.starts_with('.') || rest.starts_with('[')) steps.Add(rest);
    }
    return steps.Take();
}

// ---- Views

int CVariableTree::AddNode(Node node)
{
    m_Nodes.push_back(std::move(node));
    return static_cast<int>(m_Nodes.size());
}

// "INT[1..3,0..4]", from the brackets on that are not yet behind us.
static std::string DescribeArray(const NamedObject& object)
{
    std::string text = object.pArray->element;
    for (std::size_t level = object.level; level < object.pArray->levels.size(); ++level) {
        std::string bounds;
        for (const ArrayShape::Dimension& dimension : object.pArray->levels[level])
            bounds += (bounds.empty() ? "" : ",") + std::to_string(dimension.low) + ".." + std::to_string(dimension.high);
        text += "[" + bounds + "]";
    }
    return text;
}

VariableView CVariableTree::ShowObject(std::string name, std::string evaluateName, const NamedObject& object)
{
    VariableView view;
    view.name = std::move(name);
    view.evaluateName = std::move(evaluateName);
    view.type = object.pType ? object.pType->name : DescribeArray(object);
    view.value = view.type;
    if (object.IsScalar()) {
        MachineValue value;
        std::string error;
        const bool isRead = m_Program.m_pNames->Read(*m_Program.m_pMachine, object, value, error);
        view.value = isRead ? ToText(value) : "(" + error + ")";
        return view;
    }
    const std::size_t count = m_Program.m_pNames->CountChildren(object);
    (object.pType ? view.members : view.elements) = count;
    Node node;
    node.object = object;
    node.prefix = view.evaluateName;
    if (count > 0) view.reference = AddNode(std::move(node));
    return view;
}

VariableView CVariableTree::ShowPart(const LocalScope& scope, const std::string& name, const std::string& path)
{
    const std::vector<std::string> parts = GetPartNames(scope, path);
    std::string error;
    if (parts.empty())
        if (const std::optional<NamedObject> object = FindPart(scope, path, error))
            return ShowObject(name, scope.prefix + path, *object);
    if (const std::optional<NamedObject> object = FindPart(scope, path, error); object && !object->IsScalar())
        return ShowObject(name, scope.prefix + path, *object);
    VariableView view;
    view.name = name;
    view.evaluateName = scope.prefix + path;
    const bool isArray = !parts.empty() && parts.front().starts_with('[');
    view.value = isArray ? "array" : parts.empty() ? "structure or array" : "structure";
    (isArray ? view.elements : view.members) = parts.size();
    Node node;
    node.kind = Node::Kind::Branch;
    node.scope = scope;
    node.prefix = path;
    if (!parts.empty()) view.reference = AddNode(std::move(node));
    return view;
}

VariableView CVariableTree::ShowScope(std::string name, Node node, std::size_t members)
{
    VariableView view;
    view.name = std::move(name);
    view.reference = AddNode(std::move(node));
    view.members = members;
    return view;
}

std::vector<VariableView> CVariableTree::GetScopes(const DebugFrame& frame)
{
    std::vector<VariableView> scopes;
    if (frame.frame.pou >= 0) {
        Node node;
        const std::optional<NamedObject> instance =
            m_Program.m_pNames->GetInstance(*m_Program.m_pMachine, frame.frame);
        if (instance && frame.hasBegun) {
            node.object = *instance;
            scopes.push_back(ShowScope("Instance", node, m_Program.m_pNames->CountChildren(*instance)));
        } else if (!instance) {
            node.kind = Node::Kind::Branch;
            node.scope = MakeScope(frame);
            scopes.push_back(ShowScope("Locals", node, GetPartNames(node.scope, {}).size()));
        }
    }
    for (std::size_t i = 0; i < m_Areas.size(); ++i) {
        const std::size_t members = m_Areas[i].variables.size() + (m_Areas[i].bytes > 0 ? 1 : 0);
        Node node;
        node.kind = Node::Kind::Area;
        node.area = i;
        if (members > 0) scopes.push_back(ShowScope(m_Areas[i].title, node, members));
    }
    Node node;
    node.kind = Node::Kind::Programs;
    scopes.push_back(ShowScope("Programs", node, m_Program.m_pImage->m_Programs.size()));
    return scopes;
}

// ---- Opening

std::optional<std::vector<VariableView>> CVariableTree::GetChildren(int reference, std::size_t first, std::size_t most)
{
    if (reference < 1 || reference > static_cast<int>(m_Nodes.size())) return {};
    const Node node = m_Nodes[static_cast<std::size_t>(reference) - 1];   // a copy: showing adds nodes
    switch (node.kind) {
    case Node::Kind::Object: return ShowMembers(node, first, most);
    case Node::Kind::Branch: return ShowParts(node, first, most);
    case Node::Kind::Area: return ShowArea(node, first, most);
    case Node::Kind::Bytes: return ShowBytes(node, first, most);
    case Node::Kind::Programs: return ShowPrograms(first, most);
    }
    return {};
}

std::vector<VariableView> CVariableTree::ShowMembers(const Node& node, std::size_t first, std::size_t most)
{
    std::vector<VariableView> views;
    for (const NamedObject& child : m_Program.m_pNames->GetChildren(node.object, first, most)) {
        const std::string step = child.name.substr(node.object.name.size());
        const std::string name = step.starts_with('.') ? step.substr(1) : step;
        views.push_back(ShowObject(name, Join(node.prefix, name), child));
    }
    return views;
}

std::vector<VariableView> CVariableTree::ShowParts(const Node& node, std::size_t first, std::size_t most)
{
    std::vector<VariableView> views;
    const std::vector<std::string> names = GetPartNames(node.scope, node.prefix);
    for (std::size_t i = first; i < names.size() && views.size() < most; ++i)
        views.push_back(ShowPart(node.scope, names[i], Join(node.prefix, names[i])));
    return views;
}

std::vector<VariableView> CVariableTree::ShowArea(const Node& node, std::size_t first, std::size_t most)
{
    std::vector<VariableView> views;
    const Area& area = m_Areas[node.area];
    for (std::size_t i = first; i < area.variables.size() && views.size() < most; ++i)
        if (const std::optional<NamedObject> object = m_Program.m_pNames->GetGlobal(*area.variables[i]))
            views.push_back(ShowObject(object->name, object->name, *object));
    if (area.bytes == 0 || first > area.variables.size() || views.size() >= most) return views;
    VariableView bytes;
    bytes.name = std::string("%") + area.letter + "B";
    bytes.value = std::to_string(area.bytes) + " bytes";
    bytes.elements = area.bytes;
    Node all = node;
    all.kind = Node::Kind::Bytes;
    bytes.reference = AddNode(std::move(all));
    views.push_back(std::move(bytes));
    return views;
}

std::vector<VariableView> CVariableTree::ShowBytes(const Node& node, std::size_t first, std::size_t most)
{
    std::vector<VariableView> views;
    const Area& area = m_Areas[node.area];
    std::string error;
    for (std::size_t i = first; i < area.bytes && views.size() < most; ++i) {
        const std::string name = std::string("%") + area.letter + "B" + std::to_string(i);
        if (const std::optional<NamedObject> object = m_Program.m_pNames->Find(name, error))
            views.push_back(ShowObject(name, name, *object));
    }
    return views;
}

std::vector<VariableView> CVariableTree::ShowPrograms(std::size_t first, std::size_t most)
{
    std::vector<VariableView> views;
    const CImage& image = *m_Program.m_pImage;
    for (std::size_t i = first; i < image.m_Programs.size() && views.size() < most; ++i) {
        const ImageProgram& program = image.m_Programs[i];
        Node node;
        node.kind = Node::Kind::Branch;
        node.scope.pou = program.pou;
        node.scope.begin = image.m_Regions[static_cast<std::size_t>(program.region)].begin;
        node.scope.prefix = program.name + ".";
        const std::size_t members = GetPartNames(node.scope, {}).size();
        views.push_back(ShowScope(program.name, node, members));
        views.back().value = "program";
        if (members == 0) views.back().reference = 0;
    }
    return views;
}

std::optional<VariableView> CVariableTree::Evaluate(const DebugFrame& frame, std::string_view name, std::string& error)
{
    if (const std::optional<NamedObject> object = FindObject(frame, name, error); object && !object->name.empty()) {
        const LocalScope scope = MakeScope(frame);
        const bool isBranch = frame.frame.pou >= 0 && object->IsScalar() && !GetPartNames(scope, std::string(name)).empty();
        if (!isBranch) return ShowObject(std::string(name), std::string(name), *object);
    }
    // A structure of which the code names parts.
    const LocalScope scope = MakeScope(frame);
    if (scope.pou < 0 || name.empty() || GetPartNames(scope, std::string(name)).empty()) return {};
    return ShowPart(scope, std::string(name), std::string(name));
}

// ---- Setting

std::optional<NamedObject> CVariableTree::FindChild(const Node& node, const std::string& name, std::string& error) const
{
    const CNames& names = *m_Program.m_pNames;
    switch (node.kind) {
    case Node::Kind::Object:
        return names.FindBelow(node.object, name.starts_with('[') ? name : "." + name, error);
    case Node::Kind::Branch: return FindPart(node.scope, Join(node.prefix, name), error);
    case Node::Kind::Area:
    case Node::Kind::Bytes: return names.Find(name, error);
    case Node::Kind::Programs: break;
    }
    error = name + ": is no single value";
    return {};
}

std::optional<VariableView> CVariableTree::Set(const std::string& name, const NamedObject& object,
                                               const std::string& value, std::string& error)
{
    MachineValue parsed;
    if (!object.IsScalar()) {
        error = name + ": is no single value";
        return {};
    }
    if (!ParseValue(value, object.pType->kind, parsed, error)) {
        error.insert(0, name + ": ");
        return {};
    }
    if (!m_Program.m_pNames->Write(*m_Program.m_pMachine, object, parsed, error)) return {};
    return ShowObject(name, name, object);
}

std::optional<VariableView> CVariableTree::SetChild(int reference, const std::string& name, const std::string& value,
                                                    std::string& error)
{
    if (reference < 1 || reference > static_cast<int>(m_Nodes.size())) {
        error = "there is no such reference to variables";
        return {};
    }
    const std::optional<NamedObject> object = FindChild(m_Nodes[static_cast<std::size_t>(reference) - 1], name, error);
    return object ? Set(name, *object, value, error) : std::nullopt;
}

std::optional<VariableView> CVariableTree::SetNamed(const DebugFrame& frame, std::string_view name,
                                                    const std::string& value, std::string& error)
{
    const std::optional<NamedObject> object = FindObject(frame, name, error);
    return object ? Set(std::string(name), *object, value, error) : std::nullopt;
}
