# shellcheck shell=bash
# Sourced by the checks that want a Debian of its own, in a folder: make_root makes one anew, enter_root runs a command
# in it as an ordinary person. Both need root and debootstrap.

if [[ $EUID -ne 0 ]]; then
    echo "$0 needs root" >&2
    exit 1
fi

# make_root SUITE FOLDER: a minimal Debian with sudo and one person, "person", on this machine's package sources.
make_root() {
    local suite=$1 root=$2 mirror
    rm -rf --one-file-system "$root"
    # shellcheck disable=SC2016
    mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Origin: Debian' \
        'Codename: bookworm' 'Component: main' | head -n 1)
    debootstrap --variant=minbase --include=sudo "$suite" "$root" ${mirror:+"$mirror"}
    cp /etc/resolv.conf /etc/hosts "$root/etc/"
    echo "127.0.0.1 $(uname -n)" >> "$root/etc/hosts"
    chroot "$root" useradd --create-home person
    echo "person ALL=(ALL) NOPASSWD: ALL" > "$root/etc/sudoers.d/person"

    # npm reaches the same registry as here, and trusts whom Node.js trusts here.
    {
        if command -v npm > /dev/null; then
            echo "registry=$(npm config get registry 2> /dev/null)"
        fi
        if [[ -n ${NODE_EXTRA_CA_CERTS:-} ]]; then
            cp "$NODE_EXTRA_CA_CERTS" "$root/home/person/trusted.pem"
            echo "cafile=/home/person/trusted.pem"
        fi
    } > "$root/home/person/.npmrc"
    chroot "$root" chown -R person: /home/person
}

# copy_project ROOT: the tree as git knows it, into the person's home.
copy_project() {
    mkdir -p "$1/home/person/project"
    git ls-files -z --cached --others --exclude-standard ":!node_modules" |
        tar --create --null --files-from=- --ignore-failed-read |
        tar --extract --directory "$1/home/person/project"
    chroot "$1" chown -R person: /home/person/project
}

# enter_root ROOT COMMAND [VARIABLE=VALUE...]: all that the command starts and mounts is gone with it.
enter_root() {
    local root=$1 command=$2
    shift 2
    # shellcheck disable=SC2016
    unshare --mount --pid --fork --kill-child bash -c '
        root=$1 command=$2
        shift 2
        mount --rbind /dev "$root/dev"
        mount -t proc proc "$root/proc"
        exec chroot "$root" env -i HOME=/home/person LANG=C.UTF-8 \
            PATH=/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin "$@" \
            setpriv --reuid=person --regid=person --init-groups bash -c "cd && $command"' \
        _ "$root" "$command" "$@"
}
