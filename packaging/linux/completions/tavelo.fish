# fish completion for tavelo
set -l commands setup autostart listen insert-last restart doctor get-model history normalize transcribe rehearse

function __tavelo_models
    LC_ALL=C tavelo get-model --list 2>/dev/null | string match -r '^[a-z]\S*$'
end

complete -c tavelo -f
complete -c tavelo -s h -l help -d 'Print help'
set -l first "not __fish_seen_subcommand_from $commands"
complete -c tavelo -n $first -l version -d 'Print the version'
complete -c tavelo -n $first -a setup -d 'Set up microphone, recogniser and key'
complete -c tavelo -n $first -a autostart -d 'Start with the session'
complete -c tavelo -n $first -a listen -d 'Begin or end a dictation'
complete -c tavelo -n $first -a insert-last -d 'Insert the last text again'
complete -c tavelo -n $first -a restart -d 'Start the running program again'
complete -c tavelo -n $first -a doctor -d 'Check what a dictation needs'
complete -c tavelo -n $first -a get-model -d 'Fetch a speech model'
complete -c tavelo -n $first -a history -d 'List recent dictations'
complete -c tavelo -n $first -a normalize -d 'Print the finished text of a raw transcript'
complete -c tavelo -n $first -a transcribe -d 'Print what is heard in recordings'
complete -c tavelo -n $first -a rehearse -d 'Play a story'

complete -c tavelo -n '__fish_seen_subcommand_from autostart' -a 'on off status'
complete -c tavelo -n '__fish_seen_subcommand_from listen' -a 'start stop toggle cancel'
complete -c tavelo -n '__fish_seen_subcommand_from doctor' -l json -d 'Print a report for support'
set -l model '__fish_seen_subcommand_from get-model'
complete -c tavelo -n $model -a '(__tavelo_models)'
complete -c tavelo -n $model -l list -d 'List the models'
complete -c tavelo -n $model -l replace -d 'Fetch again what is installed'
complete -c tavelo -n $model -l from -xa '(__fish_complete_directories)' -d 'Take the archives from a folder'
complete -c tavelo -n $model -l sha256 -x -d 'Checksum of the model'
complete -c tavelo -n $model -l library-sha256 -x -d 'Checksum of the library'
complete -c tavelo -n '__fish_seen_subcommand_from history' -l limit -x -d 'How many'
complete -c tavelo -n '__fish_seen_subcommand_from history' -l json -d 'Print JSON'
complete -c tavelo -n '__fish_seen_subcommand_from history' -l forget -xa all -d 'Delete the newest, or all'
complete -c tavelo -n '__fish_seen_subcommand_from normalize' -F
complete -c tavelo -n '__fish_seen_subcommand_from transcribe' -l against -rF -d 'Count wrong words'
complete -c tavelo -n '__fish_seen_subcommand_from transcribe' -l json -d 'Print JSON'
complete -c tavelo -n '__fish_seen_subcommand_from transcribe' -F
complete -c tavelo -n '__fish_seen_subcommand_from rehearse' -l audio -rF -d 'Speak this recording'
complete -c tavelo -n '__fish_seen_subcommand_from rehearse' -l release-after -x -d 'Seconds until the key is released'
complete -c tavelo -n '__fish_seen_subcommand_from rehearse' -F
