# SPDX-License-Identifier: Apache-2.0
# Completion of pmctl in bash. To have it in every shell, source this file from ~/.bashrc.
# The program itself knows what may come next: commands, options, settings, values and the interfaces of the switch.

# Called by bash with the program, the word to complete (or its part after a '=' or ':') and the word before.
_pmctl() {
    # The word after a redirection is the name of a file.
    if [[ $3 == *[\<\>]* || ${COMP_WORDS[COMP_CWORD]} == *[\<\>]* ]]; then
        compopt -o default
        return
    fi
    local words=() word joined=
    # bash parts words at '=' and ':'; here they are joined again.
    for word in "${COMP_WORDS[@]:1:COMP_CWORD}"; do
        if [[ ${#words[@]} -gt 0 && ( -n $joined || $word == [=:]* ) ]]; then
            words[-1]+=$word
        else
            words+=("$word")
        fi
        [[ $word == *[=:] ]] && joined=yes || joined=
    done
    mapfile -t COMPREPLY < <("${1/#\~\//$HOME/}" complete -- "${words[@]}" 2>/dev/null)
    # Beside its commands, config takes the name of a file.
    [[ ${#COMPREPLY[@]} -eq 0 && ${#words[@]} -eq 2 && ${words[0]} == config ]] && compopt -o default
    # What bash has parted off is there already.
    local there=${words[-1]%"$2"}
    COMPREPLY=("${COMPREPLY[@]#"$there"}")
}

complete -o nosort -F _pmctl pmctl
