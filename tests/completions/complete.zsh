# Completes a line in an interactive zsh on its own terminal and prints the matches, one per line:
# zsh -f complete.zsh DIRECTORY DUMP LINE. The directory contains the completion; the dump file, which need not exist,
# caches the completions that come with zsh.
zmodload zsh/zpty

setup='
  unsetopt beep zle_bracketed_paste 2>/dev/null
  fpath=('${(q)1}' $fpath)
  autoload -Uz compinit && compinit -C -d '${(q)2}'
  typeset -ga seen
  compadd() {
    local -a matches
    builtin compadd -O matches "$@"
    seen+=($matches)
    builtin compadd "$@"
  }
  tell() { print -rl -- "<begin>" $seen "<en""d>" }
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
