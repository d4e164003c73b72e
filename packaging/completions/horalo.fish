# Completion of horalo's commands and options for fish.

function __horalo_zones
    echo local
    echo UTC
    sed -n 's/^Z \([^ ]*\) .*/\1/p; s/^L [^ ]* \([^ ]*\)/\1/p' /usr/share/zoneinfo/tzdata.zi 2>/dev/null
end

complete -c horalo -f
complete -c horalo -n __fish_use_subcommand -l background -d 'Start without showing anything'
complete -c horalo -n __fish_use_subcommand -l version -d 'Print the version'
complete -c horalo -l help -d 'Print help'
complete -c horalo -n __fish_use_subcommand -a convert -d 'Convert texts in the terminal'
complete -c horalo -n __fish_use_subcommand -a toggle -d 'Open the panel, or close it'
complete -c horalo -n __fish_use_subcommand -a show -d 'Open the panel'
complete -c horalo -n __fish_use_subcommand -a hide -d 'Close the panel'
complete -c horalo -n __fish_use_subcommand -a settings -d 'Open the settings window'
complete -c horalo -n __fish_use_subcommand -a check-updates -d 'Look for a new version'
complete -c horalo -n __fish_use_subcommand -a quit -d 'End Horalo'
complete -c horalo -n __fish_use_subcommand -a status -d 'What works here and what does not'
complete -c horalo -n '__fish_seen_subcommand_from convert' -l zone -x -a '(__horalo_zones)' -d 'The zone to show'
complete -c horalo -n '__fish_seen_subcommand_from convert' -l now -x -d 'The instant to take for the current one'
complete -c horalo -n '__fish_seen_subcommand_from convert' -l only -x -a 'unix-s unix-ms iso formatted relative' -d 'Print that value alone'
complete -c horalo -n '__fish_seen_subcommand_from convert status' -l json -d 'Print JSON'
