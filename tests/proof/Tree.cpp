#include "Tree.h"

void AppendInitial(const Type& type, const std::vector<Value>& given, std::vector<Value>& values)
{
    if (!given.empty()) {
        values.insert(values.end(), given.begin(), given.end());
        return;
    }
    if (type.form == Type::Form::Structure || type.form == Type::Form::Block) {
        for (const Member& member : type.members) {
            if (member.role == Role::InOut) values.push_back({});
            else AppendInitial(*member.pType, member.initial, values);
        }
        return;
    }
    if (type.form == Type::Form::Array) {
        for (int i = type.slots / type.pElement->slots; i > 0; --i) AppendInitial(*type.pElement, {}, values);
        return;
    }
    values.push_back({});
}
