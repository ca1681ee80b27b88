// SPDX-License-Identifier: BSD-3-Clause
// Chooses and composes the one text that is shown.
#include "render/TextChoice.h"

#include "render/BoundedText.h"
#include "render/CTextRenderer.h"
#include "render/LocalizedString.h"
#include "render/PascalString.h"

namespace {

struct FlaggedKind {
    std::uint32_t flag;
    TextKind kind;
};
// In the order of their priority.
constexpr FlaggedKind kKinds[] = {
    { TEXT_SCORE, TextKind::kScore },
    { TEXT_INFO, TextKind::kInfo },
    { TEXT_CHARACTER, TextKind::kCharacter },
    { TEXT_DIALOGUE, TextKind::kDialogue },
};

bool IsFilled(TextKind kind, const _TEXTPARAM& param) {
    switch (kind) {
    case TextKind::kScore:
        return true;
    case TextKind::kInfo:
        return param.szInfoText[0] != '\0';
    case TextKind::kCharacter:
        return param.szCharacter[0] != '\0';
    case TextKind::kDialogue:
        return param.szDialogue[0] != '\0';
    case TextKind::kNone:
        break;
    }
    return false;
}

void AppendLocalized(BoundedText& text, const char* key) {
    char suffix[32];
    if (CopyLocalizedString(key, suffix, sizeof suffix))
        text.Append(FieldText(suffix));
}

std::string_view ComposeCharacter(const _TEXTPARAM& param, char (&buffer)[kTextBufferSize]) {
    BoundedText text(buffer, sizeof buffer);
    text.Append(FieldText(param.szCharacter));
    if (param.dwFlags & TEXT_OFFCHARACTER)
        AppendLocalized(text, "IDS_OFFCHARACTER");
    else if (param.dwFlags & TEXT_MONOLOGUE)
        AppendLocalized(text, "IDS_MONOLOGUE");
    return text.Text();
}

} // namespace

TextKind FlaggedText(const _TEXTPARAM& param) {
    for (const FlaggedKind& entry : kKinds) {
        if (param.dwFlags & entry.flag)
            return entry.kind;
    }
    return TextKind::kNone;
}

TextKind FilledText(const _TEXTPARAM& param) {
    for (const FlaggedKind& entry : kKinds) {
        if ((param.dwFlags & entry.flag) && IsFilled(entry.kind, param))
            return entry.kind;
    }
    return TextKind::kNone;
}

std::string_view ComposeText(TextKind kind, const _TEXTPARAM& param, const InfoStrings& infos,
                             char (&buffer)[kTextBufferSize]) {
    switch (kind) {
    case TextKind::kScore:
        CTextRenderer::GetScoreInfoText(buffer, param.nScoreFormat, infos.info1, infos.info2,
                                        infos.info3, infos.info4);
        return FieldText(buffer);
    case TextKind::kInfo:
        return FieldText(param.szInfoText);
    case TextKind::kCharacter:
        return ComposeCharacter(param, buffer);
    case TextKind::kDialogue:
        return FieldText(param.szDialogue);
    case TextKind::kNone:
        break;
    }
    return {};
}
