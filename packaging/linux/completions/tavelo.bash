# bash completion for tavelo                                               -*- shell-script -*-

_tavelo() {
  local cur prev words cword command each choices=
  _init_completion || return
  for each in "${words[@]:1:cword-1}"; do
    [[ $each == -* ]] || { command=$each; break; }
  done
  case $prev in
    --from) _filedir -d; return ;;
    --audio) _filedir wav; return ;;
    --against) _filedir; return ;;
    --limit | --release-after | --sha256 | --library-sha256) return ;;
  esac
  case ${command-} in
    '') choices='setup autostart listen insert-last restart doctor get-model history normalize transcribe rehearse --version' ;;
    autostart) choices='on off status' ;;
    listen) choices='start stop toggle cancel' ;;
    doctor) choices='--json' ;;
    get-model)
      choices='--list --replace --from --sha256 --library-sha256'
      [[ $cur == -* ]] || choices=$(LC_ALL=C tavelo get-model --list 2>/dev/null | sed -n 's/^\([a-z][^ ]*\)$/\1/p')
      ;;
    history)
      choices='--limit --json --forget'
      [[ $prev != --forget ]] || choices+=' all'
      ;;
    normalize) _filedir ;;
    transcribe)
      choices='--against --json'
      [[ $cur == -* ]] || _filedir wav
      ;;
    rehearse)
      choices='--audio --release-after'
      [[ $cur == -* ]] || _filedir json
      ;;
  esac
  mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -W "$choices --help" -- "$cur")
} &&
  complete -F _tavelo tavelo
