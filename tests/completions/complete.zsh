# Completes a line in an interactive zsh on its own terminal and prints the matches, one a line, or with "displays" what
# the list would show for them: zsh -f complete.zsh DIRECTORY DUMP LINE [displays]. The directory contains the completion.
# The dump file, which need not exist, caches the completions that come with zsh.
zmodload zsh/zpty

# With -D, compadd only filters arrays. The name of the array of displays follows -d. (An interactive shell takes no
# comments.)
setup='
  unsetopt beep zle_bracketed_paste 2>/dev/null
  fpath=('${(q)1}' $fpath)
  autoload -Uz compinit && compinit -C -d '${(q)2}'
  typeset -ga matches displays
  compadd() {
    if (( $@[(I)-D] == 0 )); then
      local -a found
      builtin compadd -O found "$@"
      matches+=($found)
      (( $@[(I)-d] )) && displays+=("${(@P)@[$@[(I)-d]+1]}")
    fi
    builtin compadd "$@"
  }
  tell() { print -rl -- "<begin>" $'${4:-matches}' "<en""d>" }
  bound() { comppostfuncs=(tell); zle complete-word }
  zle -N bound
  bindkey "^I" bound
  PS1=
  precmd() { print -r -- "<rea""dy>" }
'
zpty shell zsh -f -i
zpty -w shell "eval ${(q)setup}"
zpty -r shell output '*<ready>*'
zpty -w -n shell "$3"$'\t'
zpty -r shell output '*<end>*'
zpty -d shell
output=${${output##*<begin>}%%<end>*}
print -r -- ${output//$'\r'/}
