import time

def main():
    a = [0] * 1000000
    for i in range(1000000):
        a[i] = i * 2
    total = 0
    for i in range(len(a)):
        total = total + a[i]
    return total

start = time.process_time()
result = main()
print(time.process_time() - start, result)
