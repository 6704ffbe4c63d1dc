# Completion of cowl and cowlinfo for bash. Source it, or put it where bash-completion finds it.

_cowl() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  COMPREPLY=()
  # bash takes "=" for a word of its own.
  [[ $word == = ]] && word=
  [[ $before == = ]] && before=${COMP_WORDS[COMP_CWORD - 2]}=
  case $before in
    -input | -output | -script | -inifile= | -ini_out=) mapfile -t COMPREPLY < <(compgen -f -- "$word") ;;
    -inputDir | -outputDir) mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
    -logfile) mapfile -t COMPREPLY < <(compgen -f -W "stdout stderr" -- "$word") ;;
    -progress | -saveActiveOnly) mapfile -t COMPREPLY < <(compgen -W "on off" -- "$word") ;;
    -dt) mapfile -t COMPREPLY < <(compgen -W "0 1 2 3" -- "$word") ;;
    -prefix | -postfix) ;;
    *)
      local options="-script -input -output -progress -logfile -exitstatus -verbose -batch -inputDir
        -outputDir -saveActiveOnly -prefix -postfix -dt -inifile= -ini_out="
      ((COMP_CWORD == 1)) && options+=" -h -help /?"
      mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
      [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null
      ;;
  esac
  return 0
}

_cowlinfo() {
  local word=${COMP_WORDS[COMP_CWORD]}
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "--points --model --settings --description --help --version" -- "$word")
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  fi
}

complete -o filenames -F _cowl cowl
complete -o filenames -F _cowlinfo cowlinfo
